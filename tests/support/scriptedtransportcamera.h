// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "genapi/memoryport.h"
#include "support/scriptedtransport.h"
#include "support/scriptedtransportscript.h"

#include <atomic>
#include <set>

namespace Test
{

class CScriptedDevice;
class CScriptedStream;

/** One feature with a register of its own in the usual description. */
struct SRegister
{
    const char* feature;
    std::int64_t address;
    std::int64_t bytes; // 8: a number; more: a text
};

/** A camera: its record and registers, which outlive the devices that open it. Threads: any. */
class CScriptedCamera
{
public:
    CScriptedCamera(SScriptedCamera config, const SScriptedTransportConfig& transport, std::shared_ptr<CScript> script);

    const SScriptedCamera& GetConfig() const { return m_config; }
    const std::string& GetSerialNumber() const { return m_config.serialNumber; }
    CScript& GetScript() const { return *m_script; }
    Velmo::CDeviceInfo GetDeviceInfo() const;
    void SetUserDefinedName(const std::string& name);
    std::string GetInUseBy() const;
    void SetInUseBy(const std::string& owner);
    /** The GenICam XML of the camera and of its stream grabber. */
    std::string GetDescription() const;
    std::string GetStreamDescription() const;

    bool IsRemoved() const { return m_removed.load(); }
    void MarkRemoved() { m_removed.store(true); }

    GenApi::CMemoryPort& GetMemory() { return m_memory; }
    /** Called by the ports. */
    void OnWrite(std::int64_t address, const void* data, std::int64_t length);
    std::vector<SWrite> GetWrites() const;
    void AddChunkBuffer(const SChunkBuffer& buffer);
    std::vector<SChunkBuffer> GetChunkBuffers() const;
    static const SRegister& FindRegister(const std::string& feature);
    /** Null when no register starts there. */
    static const SRegister* FindRegisterAt(std::int64_t address);

    // The one device that has control, and all that live; guarded by the lists' own mutex.
    bool TakeControl(const void* pDevice);
    void ReleaseControl(const void* pDevice);

private:
    const SScriptedCamera m_config;
    const SScriptedTransportConfig m_transport;
    const std::shared_ptr<CScript> m_script;
    GenApi::CMemoryPort m_memory;
    std::atomic<bool> m_removed{false};
    mutable std::mutex m_mutex; // guards the members below
    std::string m_userDefinedName;
    std::string m_inUseBy;
    std::vector<SWrite> m_writes;
    std::vector<SChunkBuffer> m_chunkBuffers;
    const void* m_pController = nullptr;
};

/** The way of one device's node maps to the camera's registers. */
class CScriptedPort final : public GenApi::IPort
{
public:
    CScriptedPort(std::shared_ptr<CScriptedCamera> camera, bool writable)
        : m_camera(std::move(camera)), m_writable(writable)
    {
    }
    GenApi::EAccessMode GetAccessMode() const override
    {
        return m_writable ? GenApi::EAccessMode::RW : GenApi::EAccessMode::RO;
    }
    void Read(void* buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;

private:
    void CheckThere() const;

    const std::shared_ptr<CScriptedCamera> m_camera;
    const bool m_writable;
};

} // namespace Test
