// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/internal/devicepool.h"

namespace Benchmarks
{

/** A device that is nothing but its record. */
class CTrivialDevice final : public Plugin::CameraPool::IDevice
{
public:
    explicit CTrivialDevice(QSharedPointer<Plugin::AppCore::IInfo> info) : m_info(std::move(info)) {}
    QSharedPointer<Plugin::AppCore::IInfo> getInfo() const override { return m_info; }
    bool isConnected() const override { return false; }
    bool isOpen() const override { return false; }
    QSharedPointer<ParameterCollection::IParameterCollection> getParameterCollection() const override { return {}; }
    bool open(bool) override { return false; }
    void close() override {}

private:
    QSharedPointer<Plugin::AppCore::IInfo> m_info;
};

/** The pool's base with devices that cost nothing of their own. */
class CTrivialPool final : public Plugin::CameraPool::Internal::ADevicePool
{
public:
    CTrivialPool() : ADevicePool(nullptr) {}
    ~CTrivialPool() override { releaseDevices(); }
    QSharedPointer<Plugin::CameraPool::IDevice>
    createDevice(QSharedPointer<Plugin::CameraPool::IBaseInfo> info) override
    {
        auto device = findDevice(info);
        if (!device)
        {
            device = QSharedPointer<CTrivialDevice>::create(info);
            appendDevice(device);
        }
        return device;
    }
};

} // namespace Benchmarks
