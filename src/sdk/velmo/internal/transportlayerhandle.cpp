// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/transportlayerhandle.h"

#include "velmo/internal/tlhandles.h"

#include <algorithm>
#include <iterator>
#include <mutex>

namespace Velmo::Internal
{

namespace
{

template <class List> int Deliver(List& list, List&& found, bool addToList)
{
    if (addToList)
    {
        list.insert(list.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    }
    else
    {
        list.swap(found);
    }
    return static_cast<int>(list.size());
}

/** Keeps the transport alive as long as one of its interfaces. */
class CInterfaceHandle final : public IInterface
{
public:
    CInterfaceHandle(std::shared_ptr<Transport::ITransport> transport,
                     std::unique_ptr<Transport::IInterface> interfaceObject)
        : m_transport(std::move(transport)), m_interface(std::move(interfaceObject))
    {
    }
    const CInterfaceInfo& GetInterfaceInfo() const override { return m_interface->GetInterfaceInfo(); }
    void Open() override { m_interface->Open(); }
    void Close() override { m_interface->Close(); }
    bool IsOpen() const override { return m_interface->IsOpen(); }
    GenApi::INodeMap* GetNodeMap() override { return m_interface->GetNodeMap(); }

private:
    std::shared_ptr<Transport::ITransport> m_transport; // declared first: outlives the interface
    std::unique_ptr<Transport::IInterface> m_interface;
};

template <class Base> class CTransportLayerHandle : public Base, public ITransportLayerHandle
{
public:
    explicit CTransportLayerHandle(std::shared_ptr<Transport::ITransport> transport)
        : m_info(transport->GetTlInfo()), m_transport(std::move(transport))
    {
    }

    std::shared_ptr<Transport::ITransport> Detach() override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return std::move(m_transport);
    }

    const CTlInfo& GetTlInfo() const override { return m_info; }

    int EnumerateInterfaces(InterfaceInfoList& list, bool addToList) override
    {
        InterfaceInfoList found;
        Get()->EnumerateInterfaces(found);
        return Deliver(list, std::move(found), addToList);
    }

    int EnumerateDevices(DeviceInfoList& list, bool addToList) override
    {
        DeviceInfoList found;
        Get()->EnumerateDevices(found, Transport::EDiscoveryScope::Usable);
        return Deliver(list, std::move(found), addToList);
    }

    IInterface* CreateInterface(const CInterfaceInfo& info) override
    {
        auto transport = Get();
        auto made = transport->CreateInterface(info);
        return made == nullptr ? nullptr : new CInterfaceHandle(std::move(transport), std::move(made));
    }

    void DestroyInterface(IInterface* pInterface) override { delete pInterface; }

    IVelmoDevice* CreateDevice(const CDeviceInfo& info) override
    {
        return CTlHandles::GetInstance().CreateDevice(Get(), info);
    }

    void DestroyDevice(IVelmoDevice* pDevice) override { CTlHandles::GetInstance().DestroyDevice(pDevice); }

    CDeviceInfo CreateDeviceInfo() override
    {
        CDeviceInfo info;
        info.SetDeviceClass(m_info.GetDeviceClass());
        info.SetTLType(m_info.GetTLType());
        return info;
    }

    GenApi::INodeMap* GetNodeMap() override { return Get()->GetNodeMap(); }

protected:
    std::shared_ptr<Transport::ITransport> Get() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_transport == nullptr)
        {
            GENICAM_THROW(RuntimeException, "The transport layer '" + m_info.GetDeviceClass().str() +
                                                "' is gone: the SDK was terminated.");
        }
        return m_transport;
    }

private:
    const CTlInfo m_info;
    mutable std::mutex m_mutex; // guards m_transport; never held while it is called
    std::shared_ptr<Transport::ITransport> m_transport;
};

class CGigETransportLayerHandle final : public CTransportLayerHandle<IGigETransportLayer>
{
public:
    CGigETransportLayerHandle(std::shared_ptr<Transport::ITransport> transport, Transport::IGigEExtension& extension)
        : CTransportLayerHandle(std::move(transport)), m_extension(extension)
    {
    }

    int EnumerateAllDevices(DeviceInfoList& list, bool addToList) override
    {
        DeviceInfoList found;
        Get()->EnumerateDevices(found, Transport::EDiscoveryScope::All);
        return Deliver(list, std::move(found), addToList);
    }

    bool AnnounceRemoteDevice(const CDeviceInfo& info) override
    {
        const auto alive = Get();
        return m_extension.AnnounceRemoteDevice(info);
    }

    bool IssueActionCommand(std::uint32_t deviceKey, std::uint32_t groupKey, std::uint32_t groupMask,
                            const GenICam::gcstring& broadcastAddress, std::uint32_t timeoutMs,
                            unsigned int* pNumResults, GigEActionCommandResult* results) override
    {
        return Issue({deviceKey, groupKey, groupMask, std::nullopt, broadcastAddress.str(), timeoutMs}, pNumResults,
                     results);
    }

    bool IssueScheduledActionCommand(std::uint32_t deviceKey, std::uint32_t groupKey, std::uint32_t groupMask,
                                     std::uint64_t actionTime, const GenICam::gcstring& broadcastAddress,
                                     std::uint32_t timeoutMs, unsigned int* pNumResults,
                                     GigEActionCommandResult* results) override
    {
        return Issue({deviceKey, groupKey, groupMask, actionTime, broadcastAddress.str(), timeoutMs}, pNumResults,
                     results);
    }

private:
    bool Issue(Transport::SActionCommand command, unsigned int* pNumResults, GigEActionCommandResult* results)
    {
        command.expectedAnswers = command.timeoutMs == 0 || pNumResults == nullptr ? 0 : *pNumResults;
        const auto alive = Get();
        const std::vector<Transport::SActionAnswer> answers = m_extension.IssueAction(command);
        const std::size_t count = std::min(answers.size(), command.expectedAnswers);
        for (std::size_t i = 0; results != nullptr && i < count; ++i)
        {
            results[i] = {};
            answers[i].address.copy(results[i].DeviceAddress, sizeof results[i].DeviceAddress - 1);
            results[i].Status = static_cast<std::int32_t>(answers[i].status);
        }
        if (pNumResults != nullptr)
        {
            *pNumResults = static_cast<unsigned int>(count);
        }
        return count >= command.expectedAnswers;
    }

    Transport::IGigEExtension& m_extension; // part of the transport
};

} // namespace

std::unique_ptr<ITransportLayer> MakeTransportLayerHandle(std::shared_ptr<Transport::ITransport> transport,
                                                          ITransportLayerHandle*& pDetachable)
{
    if (Transport::IGigEExtension* pExtension = transport->GetGigEExtension())
    {
        auto handle = std::make_unique<CGigETransportLayerHandle>(std::move(transport), *pExtension);
        pDetachable = handle.get();
        return handle;
    }
    auto handle = std::make_unique<CTransportLayerHandle<ITransportLayer>>(std::move(transport));
    pDetachable = handle.get();
    return handle;
}

} // namespace Velmo::Internal
