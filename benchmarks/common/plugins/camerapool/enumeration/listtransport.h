// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"

#include <memory>

namespace Benchmarks
{

/** Records of that many cameras; the set's name makes those of one set differ from those of another. */
Velmo::DeviceInfoList makeDevices(const std::string& set, int count);

/** A transport that hands out a copy of a list and does nothing else. */
class CListTransport final : public Velmo::Transport::ITransport
{
public:
    void setDevices(Velmo::DeviceInfoList devices) { m_devices = std::move(devices); }

    Velmo::CTlInfo GetTlInfo() const override;
    void EnumerateInterfaces(Velmo::InterfaceInfoList& list) override;
    void EnumerateDevices(Velmo::DeviceInfoList& list, Velmo::Transport::EDiscoveryScope scope) override;
    std::unique_ptr<Velmo::IVelmoDevice> CreateDevice(const Velmo::CDeviceInfo& info) override;
    std::unique_ptr<Velmo::Transport::IInterface> CreateInterface(const Velmo::CInterfaceInfo& info) override;
    GenApi::INodeMap* GetNodeMap() override { return nullptr; }

private:
    Velmo::DeviceInfoList m_devices;
};

/** Runs the SDK with one such transport alone. */
class CListSdk
{
public:
    CListSdk();
    ~CListSdk();
    CListSdk(const CListSdk&) = delete;
    CListSdk& operator=(const CListSdk&) = delete;

    CListTransport& transport() { return *m_transport; }

private:
    std::shared_ptr<CListTransport> m_transport = std::make_shared<CListTransport>();
};

} // namespace Benchmarks
