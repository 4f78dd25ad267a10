// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/gigeclient.h"

#include "genapi/exceptions.h"
#include "transports/gige/gigetransport.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace Test
{

using Velmo::Transport::EDiscoveryScope;

void Execute(Velmo::IVelmoDevice& device, const char* command)
{
    GenApi::CCommandPtr(device.GetNodeMap()->GetNode(command))->Execute();
}

void CSignal::Raise()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_count;
    m_changed.notify_all();
}

bool CSignal::Wait(std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, timeout, [this] { return m_count > 0; });
}

int CSignal::Count()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_count;
}

void SetFloat(Velmo::IVelmoDevice& device, const char* name, double value)
{
    GenApi::CFloatPtr(device.GetNodeMap()->GetNode(name))->SetValue(value);
}

std::int64_t GetInteger(GenApi::INodeMap& nodeMap, const char* name)
{
    const GenApi::CIntegerPtr pInteger(nodeMap.GetNode(name));
    if (!pInteger)
    {
        throw std::runtime_error(std::string("There is no ") + name);
    }
    return pInteger->GetValue();
}

CGigEClient::CGigEClient() : m_pTransport(Velmo::GigE::CreateTransport()) {}

Velmo::DeviceInfoList CGigEClient::Find(EDiscoveryScope scope)
{
    Velmo::DeviceInfoList list;
    m_pTransport->EnumerateDevices(list, scope);
    return list;
}

std::unique_ptr<Velmo::IVelmoDevice> CGigEClient::Create(const std::string& serial)
{
    for (const Velmo::CDeviceInfo& info : Find(EDiscoveryScope::All))
    {
        if (info.GetSerialNumber().str() == serial)
        {
            return m_pTransport->CreateDevice(info);
        }
    }
    throw std::runtime_error("There is no camera " + serial);
}

std::unique_ptr<Velmo::IVelmoDevice> CGigEClient::Open(const std::string& serial, Velmo::EDeviceAccess access)
{
    std::unique_ptr<Velmo::IVelmoDevice> pDevice = Create(serial);
    pDevice->Open(access);
    return pDevice;
}

bool CGigEClient::WaitForUsable(const std::string& serial, std::chrono::seconds timeout, std::chrono::seconds pause)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (std::chrono::steady_clock::now() < deadline)
    {
        for (const Velmo::CDeviceInfo& info : Find(EDiscoveryScope::Usable)) // takes its time: no busy loop
        {
            if (info.GetSerialNumber().str() == serial)
            {
                return true;
            }
        }
        std::this_thread::sleep_for(pause);
    }
    return false;
}

CStreamBuffers::CStreamBuffers(Velmo::Transport::IStream& stream, std::size_t count) : m_stream(stream)
{
    m_stream.Open();
    m_memory.assign(count, std::vector<std::uint8_t>(m_stream.GetPayloadBytes()));
    for (auto& memory : m_memory)
    {
        m_stream.AnnounceBuffer(memory.data(), memory.size(), &memory);
        m_stream.QueueBuffer(&memory);
    }
}

CStreamBuffers::~CStreamBuffers()
{
    m_stream.Stop();
    Velmo::Transport::SStreamResult left; // of buffers that are no more when the stream starts again
    while (m_stream.RetrieveResult(left, 0))
    {
    }
    for (auto& memory : m_memory)
    {
        m_stream.RevokeBuffer(&memory);
    }
    m_stream.Close();
}

Velmo::Transport::SStreamResult CStreamBuffers::Next(std::vector<std::uint8_t>* pImage)
{
    Velmo::Transport::SStreamResult result;
    constexpr unsigned int limitMs = 5000;
    if (!m_stream.RetrieveResult(result, limitMs))
    {
        throw std::runtime_error("No image within 5 s");
    }
    const auto& memory = *static_cast<std::vector<std::uint8_t>*>(result.pContext);
    if (pImage != nullptr)
    {
        pImage->assign(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(result.payloadBytes));
    }
    if (result.status != Velmo::Transport::EResultStatus::Canceled)
    {
        m_stream.QueueBuffer(result.pContext);
    }
    return result;
}

CRunningStream::CRunningStream(Velmo::IVelmoDevice& device, std::size_t buffers)
    : m_device(device), m_stream(*device.GetStream(0)), m_buffers(m_stream, buffers)
{
    m_stream.Start();
    Execute(m_device, "AcquisitionStart");
}

CRunningStream::~CRunningStream()
{
    try
    {
        if (!m_device.IsRemoved())
        {
            Execute(m_device, "AcquisitionStop");
        }
    }
    catch (const GenICam::GenericException& error)
    {
        ADD_FAILURE() << "The camera does not stop: " << error.GetDescription();
    }
}

} // namespace Test
