// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeclient.h"

#include "genapi/exceptions.h"
#include "transports/gige/gigetransport.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Test
{

using Velmo::Transport::EDiscoveryScope;

namespace
{

void Execute(Velmo::IVelmoDevice& device, const char* command)
{
    GenApi::CCommandPtr(device.GetNodeMap()->GetNode(command))->Execute();
}

} // namespace

void CSignal::Raise()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isRaised = true;
    m_changed.notify_all();
}

bool CSignal::Wait(std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, timeout, [this] { return m_isRaised; });
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

std::unique_ptr<Velmo::IVelmoDevice> CGigEClient::Open(const std::string& serial)
{
    for (const Velmo::CDeviceInfo& info : Find(EDiscoveryScope::All))
    {
        if (info.GetSerialNumber().str() == serial)
        {
            std::unique_ptr<Velmo::IVelmoDevice> pDevice = m_pTransport->CreateDevice(info);
            pDevice->Open(Velmo::EDeviceAccess::Control);
            return pDevice;
        }
    }
    throw std::runtime_error("There is no camera " + serial);
}

bool CGigEClient::WaitForUsable(const std::string& serial, std::chrono::seconds timeout)
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
    }
    return false;
}

CRunningStream::CRunningStream(Velmo::IVelmoDevice& device, std::size_t buffers)
    : m_device(device), m_stream(*device.GetStream(0))
{
    m_stream.Open();
    m_memory.assign(buffers, std::vector<std::uint8_t>(m_stream.GetPayloadBytes()));
    for (auto& memory : m_memory)
    {
        m_stream.AnnounceBuffer(memory.data(), memory.size(), &memory);
        m_stream.QueueBuffer(&memory);
    }
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
    m_stream.Stop();
    for (auto& memory : m_memory)
    {
        m_stream.RevokeBuffer(&memory);
    }
    m_stream.Close();
}

Velmo::Transport::SStreamResult CRunningStream::Next()
{
    Velmo::Transport::SStreamResult result;
    constexpr unsigned int limitMs = 5000;
    if (!m_stream.RetrieveResult(result, limitMs))
    {
        throw std::runtime_error("No image within 5 s");
    }
    m_stream.QueueBuffer(result.pContext);
    return result;
}

} // namespace Test
