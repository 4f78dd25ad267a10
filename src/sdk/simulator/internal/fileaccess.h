// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/internal/firmwareslots.h"
#include "simulator/internal/settings.h"

#include <array>
#include <memory>
#include <vector>

namespace Simulator::Internal
{

/** SFNC's file access with the files of the camera model, the firmware's features, and their faults. */
void AddFileAccessControl(std::vector<SFeature>& features);

/**
 * The files of a camera behind the registers of SFNC's file access, and the firmware that one of them carries.
 *
 * What an operation asked for is answered by FileOperationStatus and FileOperationResult, of the last operation.
 * Threads: the owner's lock.
 */
class SIMULATOR_TEST_EXPORT CFileAccess
{
public:
    static constexpr std::size_t FirmwareCapacity = 16 * 1024 * 1024; // bytes
    static constexpr std::size_t UserFileCapacity = 64 * 1024;

    /** Power comes: boots the firmware and says so in DeviceFirmwareVersion. */
    CFileAccess(CSettings& settings, std::shared_ptr<SFlash> flash, const SCameraConfig& config);

    /** Does FileOperationExecute; true when power goes meanwhile. */
    bool Execute();
    /** Does FirmwareActivate; throws GenICam::AccessException when there is nothing to activate. */
    void Activate();
    /** Notes that a register is written; true when power goes before that. */
    bool CountWrite();
    /** Brings the registers that change by themselves up to date. */
    void Refresh();
    /** The application is gone: closes its files; an upload that it did not close is Invalid. */
    void Abandon();
    /** Whether the next reset boots other firmware. */
    bool IsActivationPending() const;

private:
    enum class EFile : std::uint32_t
    {
        FirmwareUpdate,
        UserFile1
    };
    enum class EStatus : std::uint32_t
    {
        Success,
        Failure,
        Overflow
    };
    struct SOpenFile
    {
        bool isOpen = false;
        bool isReadable = false;
        bool isWritable = false;
    };
    struct SOutcome
    {
        EStatus status = EStatus::Success;
        std::uint64_t result = 0; // bytes, of Read and Write
    };

    EFile Selected() const;
    SOpenFile& State(EFile file) { return m_open.at(static_cast<std::size_t>(file)); }
    std::vector<std::uint8_t>& Contents(EFile file);
    /** Counts a fault down; true when it strikes now. */
    bool Strikes(std::int64_t address);
    SOutcome Operate(bool losesPower);
    SOutcome Open(EFile file);
    SOutcome Close(EFile file, bool losesPower);
    SOutcome Read(EFile file);
    SOutcome Write(EFile file, bool isCutShort);
    SOutcome Delete(EFile file, bool losesPower);

    CSettings& m_settings;
    const std::shared_ptr<SFlash> m_flash;
    const SCameraConfig& m_config;
    CFirmwareSlots m_firmware;
    std::array<SOpenFile, 2> m_open;
};

} // namespace Simulator::Internal
