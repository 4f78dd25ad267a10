// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/faultregisters.h"

#include "simulator/registers.h"

namespace Simulator::Internal
{

void GetFaults(const CRegisterMemory& memory, SFaults& faults)
{
    const auto number = [&memory](std::int64_t address)
    {
        return static_cast<std::uint32_t>(memory.GetInteger(address));
    };
    faults.dropFrames = number(Register::FaultDropFrames);
    faults.failEveryNth = number(Register::FaultFailEveryNth);
    faults.stall = number(Register::FaultStall) != 0;
    faults.chunkLies = number(Register::FaultChunkLies) != 0;
    faults.chunkMissing = number(Register::FaultChunkMissing) != 0;
    faults.removalReports = number(Register::FaultRemovalReports);
    faults.powerLossAtFileOperation = number(Register::FaultPowerLossAtFileOperation);
    faults.powerLossAtWrite = number(Register::FaultPowerLossAtWrite);
    faults.fileFailure = number(Register::FaultFileFailure);
    faults.fileShortWrite = number(Register::FaultFileShortWrite);
    faults.fileDelayMs = number(Register::FaultFileDelay);
    faults.afterReset = static_cast<EAfterReset>(number(Register::FaultAfterReset));
}

void SetFaults(CRegisterMemory& memory, const SFaults& faults)
{
    memory.SetInteger(Register::FaultDropFrames, faults.dropFrames);
    memory.SetInteger(Register::FaultFailEveryNth, faults.failEveryNth);
    memory.SetInteger(Register::FaultStall, faults.stall ? 1 : 0);
    memory.SetInteger(Register::FaultChunkLies, faults.chunkLies ? 1 : 0);
    memory.SetInteger(Register::FaultChunkMissing, faults.chunkMissing ? 1 : 0);
    memory.SetInteger(Register::FaultRemovalReports, faults.removalReports);
    memory.SetInteger(Register::FaultPowerLossAtFileOperation, faults.powerLossAtFileOperation);
    memory.SetInteger(Register::FaultPowerLossAtWrite, faults.powerLossAtWrite);
    memory.SetInteger(Register::FaultFileFailure, faults.fileFailure);
    memory.SetInteger(Register::FaultFileShortWrite, faults.fileShortWrite);
    memory.SetInteger(Register::FaultFileDelay, faults.fileDelayMs);
    memory.SetInteger(Register::FaultAfterReset, static_cast<std::uint64_t>(faults.afterReset));
}

SCameraConfig MakeConfigAfterReset(const SCameraConfig& config, const SFaults& faultsNow)
{
    SCameraConfig after = config;
    after.faults.powerLossAtFileOperation = faultsNow.powerLossAtFileOperation;
    after.faults.powerLossAtWrite = faultsNow.powerLossAtWrite;
    after.faults.fileFailure = faultsNow.fileFailure;
    after.faults.fileShortWrite = faultsNow.fileShortWrite;
    if (faultsNow.afterReset == EAfterReset::OtherSerial)
    {
        char& first = after.serialNumber.front(); // as long as before: registers cut long ones off
        first = first == 'X' ? 'Y' : 'X';
    }
    return after;
}

} // namespace Simulator::Internal
