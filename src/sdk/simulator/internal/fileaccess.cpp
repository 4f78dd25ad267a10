// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/fileaccess.h"

#include "simulator/registers.h"

#include <algorithm>

namespace Simulator::Internal
{

namespace
{

// Values of FileOperationSelector.
constexpr std::uint64_t OperationOpen = 0;
constexpr std::uint64_t OperationClose = 1;
constexpr std::uint64_t OperationRead = 2;
constexpr std::uint64_t OperationWrite = 3;
constexpr std::uint64_t OperationDelete = 4;

// Values of FileOpenMode.
constexpr std::uint64_t ModeRead = 0;
constexpr std::uint64_t ModeWrite = 1;
constexpr std::uint64_t ModeReadWrite = 2;

constexpr std::int64_t Files = 2;

SFeature Make(const char* category, const char* name, EKind kind, std::int64_t address, EAccess access,
              const char* toolTip)
{
    SFeature feature;
    feature.category = category;
    feature.name = name;
    feature.kind = kind;
    feature.address = address;
    feature.access = access;
    feature.toolTip = toolTip;
    feature.max = kind == EKind::Integer ? 4294967295.0 : 0.0;
    feature.visibility = "Guru";
    return feature;
}

void AddSelectors(std::vector<SFeature>& features, const char* category)
{
    SFeature file = Make(category, "FileSelector", EKind::Enumeration, Register::FileSelector, EAccess::ReadWrite,
                         "File of the device to work with.");
    file.entries = {{"FirmwareUpdate", 0}, {"UserFile1", 1}};
    file.selected = "FileOperationSelector";
    file.alsoSelected = {"FileOperationExecute", "FileOpenMode",        "FileAccessBuffer",    "FileAccessOffset",
                         "FileAccessLength",     "FileOperationStatus", "FileOperationResult", "FileSize"};
    features.push_back(file);
    SFeature mode = Make(category, "FileOpenMode", EKind::Enumeration, Register::FileOpenMode, EAccess::ReadWrite,
                         "What the selected file is opened for.");
    mode.entries = {{"Read", ModeRead}, {"Write", ModeWrite}, {"ReadWrite", ModeReadWrite}};
    mode.selector = "FileSelector";
    mode.selectorAddress = Register::FileSelector;
    mode.banks = Files;
    features.push_back(mode);
    SFeature operation = Make(category, "FileOperationSelector", EKind::Enumeration, Register::FileOperationSelector,
                              EAccess::ReadWrite, "What FileOperationExecute does with the selected file.");
    operation.entries = {{"Open", OperationOpen},
                         {"Close", OperationClose},
                         {"Read", OperationRead},
                         {"Write", OperationWrite},
                         {"Delete", OperationDelete}};
    operation.selected = "FileOperationExecute";
    operation.alsoSelected = {"FileAccessBuffer", "FileAccessOffset", "FileAccessLength", "FileOperationStatus",
                              "FileOperationResult"};
    features.push_back(operation);
}

void AddOperations(std::vector<SFeature>& features, const char* category)
{
    features.push_back(Make(category, "FileOperationExecute", EKind::Command, Register::FileOperationExecute,
                            EAccess::WriteOnly, "Does the selected operation with the selected file."));
    SFeature buffer = Make(category, "FileAccessBuffer", EKind::Bytes, Register::FileAccessBuffer, EAccess::ReadWrite,
                           "The bytes to write to the file, or those that were read from it.");
    buffer.bytes = Register::FileAccessBufferBytes;
    buffer.isVolatile = true;
    features.push_back(buffer);
    SFeature offset = Make(category, "FileAccessOffset", EKind::Integer, Register::FileAccessOffset, EAccess::ReadWrite,
                           "Place in the file of the buffer's first byte.");
    offset.unit = "B";
    features.push_back(offset);
    SFeature length = Make(category, "FileAccessLength", EKind::Integer, Register::FileAccessLength, EAccess::ReadWrite,
                           "How many bytes of the buffer are read or written.");
    length.unit = "B";
    length.max = static_cast<double>(Register::FileAccessBufferBytes);
    features.push_back(length);
    SFeature status = Make(category, "FileOperationStatus", EKind::Enumeration, Register::FileOperationStatus,
                           EAccess::ReadOnly, "How the last operation ended.");
    status.entries = {{"Success", 0}, {"Failure", 1}, {"Overflow", 2}};
    status.isVolatile = true;
    features.push_back(status);
    SFeature result = Make(category, "FileOperationResult", EKind::Integer, Register::FileOperationResult,
                           EAccess::ReadOnly, "How many bytes the last operation read or wrote.");
    result.unit = "B";
    result.isVolatile = true;
    features.push_back(result);
    SFeature size = Make(category, "FileSize", EKind::Integer, Register::FileSize, EAccess::ReadOnly,
                         "How many bytes the selected file has.");
    size.unit = "B";
    size.isVolatile = true;
    features.push_back(size);
}

void AddFirmware(std::vector<SFeature>& features)
{
    constexpr auto Category = "FirmwareControl";
    SFeature activate = Make(Category, "FirmwareActivate", EKind::Command, Register::FirmwareActivate,
                             EAccess::WriteOnly, "Lets the next reset start the firmware that was uploaded.");
    activate.isCustom = true;
    features.push_back(activate);
    SFeature status = Make(Category, "FirmwareStatus", EKind::Enumeration, Register::FirmwareStatus, EAccess::ReadOnly,
                           "What became of the firmware that was uploaded.");
    for (const auto& [name, value] : {std::pair("Idle", EFirmwareStatus::Idle),
                                      {"Receiving", EFirmwareStatus::Receiving},
                                      {"Verified", EFirmwareStatus::Verified},
                                      {"Invalid", EFirmwareStatus::Invalid},
                                      {"ActivationPending", EFirmwareStatus::ActivationPending}})
    {
        status.entries.emplace_back(name, static_cast<std::int64_t>(value));
    }
    status.isVolatile = true;
    status.isCustom = true;
    features.push_back(status);
}

void AddFileFaults(std::vector<SFeature>& features)
{
    const auto fault = [&](const char* name, EKind kind, std::int64_t address, const char* toolTip) -> SFeature&
    {
        SFeature feature = Make("FaultControl", name, kind, address, EAccess::ReadWrite, toolTip);
        feature.isCustom = true;
        feature.isVolatile = true;
        features.push_back(feature);
        return features.back();
    };
    fault("FaultPowerLossAtFileOperation", EKind::Integer, Register::FaultPowerLossAtFileOperation,
          "Power goes in the middle of the n-th file operation from now; 0 for none.");
    fault("FaultPowerLossAtWrite", EKind::Integer, Register::FaultPowerLossAtWrite,
          "Power goes before the n-th register write from now; 0 for none.");
    fault("FaultFileFailure", EKind::Integer, Register::FaultFileFailure,
          "The n-th file operation from now fails; 0 for none.");
    fault("FaultFileShortWrite", EKind::Integer, Register::FaultFileShortWrite,
          "The n-th write to a file from now takes half of the bytes; 0 for none.");
    SFeature& delay =
        fault("FaultFileDelay", EKind::Integer, Register::FaultFileDelay, "How much longer each file operation takes.");
    delay.unit = "ms";
    delay.max = 60000.0;
    SFeature& after = fault("FaultAfterReset", EKind::Enumeration, Register::FaultAfterReset,
                            "What comes back after a reset in place of this device.");
    after.entries = {{"Same", static_cast<std::int64_t>(EAfterReset::Same)},
                     {"Never", static_cast<std::int64_t>(EAfterReset::Never)},
                     {"Twice", static_cast<std::int64_t>(EAfterReset::Twice)},
                     {"OtherSerial", static_cast<std::int64_t>(EAfterReset::OtherSerial)}};
}

} // namespace

void AddFileAccessControl(std::vector<SFeature>& features)
{
    constexpr auto Category = "FileAccessControl";
    AddSelectors(features, Category);
    AddOperations(features, Category);
    AddFirmware(features);
    AddFileFaults(features);
}

CFileAccess::CFileAccess(CSettings& settings, std::shared_ptr<SFlash> flash, const SCameraConfig& config)
    : m_settings(settings), m_flash(std::move(flash)), m_config(config), m_firmware(m_flash->firmware, m_config)
{
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    m_settings.GetMemory().SetText(Register::DeviceFirmwareVersion, m_firmware.Boot());
}

CFileAccess::EFile CFileAccess::Selected() const
{
    return static_cast<EFile>(m_settings.GetMemory().GetInteger(Register::FileSelector));
}

std::vector<std::uint8_t>& CFileAccess::Contents(EFile file)
{
    return file == EFile::FirmwareUpdate ? m_flash->firmware.Inactive().image : m_flash->userFile;
}

bool CFileAccess::Strikes(std::int64_t address)
{
    const std::uint64_t left = m_settings.GetMemory().GetInteger(address);
    if (left == 0)
    {
        return false;
    }
    m_settings.GetMemory().SetInteger(address, left - 1);
    return left == 1;
}

bool CFileAccess::CountWrite()
{
    return Strikes(Register::FaultPowerLossAtWrite);
}

bool CFileAccess::Execute()
{
    const bool losesPower = Strikes(Register::FaultPowerLossAtFileOperation);
    const bool fails = Strikes(Register::FaultFileFailure);
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    const SOutcome outcome = fails ? SOutcome{EStatus::Failure, 0} : Operate(losesPower);
    m_settings.GetMemory().SetInteger(Register::FileOperationStatus, static_cast<std::uint64_t>(outcome.status));
    m_settings.GetMemory().SetInteger(Register::FileOperationResult, outcome.result);
    return losesPower;
}

CFileAccess::SOutcome CFileAccess::Operate(bool losesPower)
{
    const EFile file = Selected();
    switch (m_settings.GetMemory().GetInteger(Register::FileOperationSelector))
    {
    case OperationOpen:
        return Open(file);
    case OperationClose:
        return Close(file, losesPower);
    case OperationRead:
        return Read(file);
    case OperationWrite:
        return Write(file, Strikes(Register::FaultFileShortWrite) || losesPower);
    default:
        return Delete(file, losesPower);
    }
}

CFileAccess::SOutcome CFileAccess::Open(EFile file)
{
    SOpenFile& state = State(file);
    const std::uint64_t mode =
        m_settings.GetMemory().GetInteger(Register::FileOpenMode + 4 * static_cast<std::int64_t>(file));
    if (state.isOpen || (mode == ModeRead && Contents(file).empty()))
    {
        return {EStatus::Failure, 0};
    }
    state = {true, mode != ModeWrite, mode != ModeRead};
    if (file == EFile::FirmwareUpdate && state.isWritable)
    {
        m_firmware.BeginUpload(mode == ModeReadWrite);
    }
    else if (mode == ModeWrite)
    {
        Contents(file).clear();
    }
    return {};
}

CFileAccess::SOutcome CFileAccess::Close(EFile file, bool losesPower)
{
    SOpenFile& state = State(file);
    if (!state.isOpen)
    {
        return {EStatus::Failure, 0};
    }
    const bool isUpload = file == EFile::FirmwareUpdate && state.isWritable;
    state = {};
    if (isUpload && !losesPower && !m_firmware.EndUpload())
    {
        return {EStatus::Failure, 0};
    }
    return {};
}

CFileAccess::SOutcome CFileAccess::Read(EFile file)
{
    const std::vector<std::uint8_t>& contents = Contents(file);
    CRegisterMemory& memory = m_settings.GetMemory();
    const std::size_t offset = memory.GetInteger(Register::FileAccessOffset);
    if (!State(file).isReadable || offset > contents.size())
    {
        return {EStatus::Failure, 0};
    }
    const std::size_t bytes =
        std::min<std::size_t>(memory.GetInteger(Register::FileAccessLength), contents.size() - offset);
    memory.Set(contents.data() + offset, Register::FileAccessBuffer, static_cast<std::int64_t>(bytes));
    return {EStatus::Success, bytes};
}

CFileAccess::SOutcome CFileAccess::Write(EFile file, bool isCutShort)
{
    std::vector<std::uint8_t>& contents = Contents(file);
    const CRegisterMemory& memory = m_settings.GetMemory();
    const std::size_t offset = memory.GetInteger(Register::FileAccessOffset);
    if (!State(file).isWritable || offset > contents.size()) // a file has no holes
    {
        return {EStatus::Failure, 0};
    }
    const std::size_t capacity = file == EFile::FirmwareUpdate ? FirmwareCapacity : UserFileCapacity;
    const std::size_t asked = memory.GetInteger(Register::FileAccessLength);
    const std::size_t fitting = std::min(asked, capacity - offset);
    const std::size_t bytes = isCutShort ? fitting / 2 : fitting;
    contents.resize(std::max(contents.size(), offset + bytes));
    memory.Get(contents.data() + offset, Register::FileAccessBuffer, static_cast<std::int64_t>(bytes));
    return {fitting < asked ? EStatus::Overflow : EStatus::Success, bytes};
}

CFileAccess::SOutcome CFileAccess::Delete(EFile file, bool losesPower)
{
    if (State(file).isOpen)
    {
        return {EStatus::Failure, 0};
    }
    if (file == EFile::FirmwareUpdate)
    {
        m_firmware.Erase();
    }
    else if (!losesPower)
    {
        m_flash->userFile.clear();
    }
    return {};
}

void CFileAccess::Activate()
{
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    m_firmware.Activate();
}

void CFileAccess::Refresh()
{
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    m_settings.GetMemory().SetInteger(Register::FileSize, Contents(Selected()).size());
    m_settings.GetMemory().SetInteger(Register::FirmwareStatus, static_cast<std::uint64_t>(m_flash->firmware.status));
}

void CFileAccess::Abandon()
{
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    if (State(EFile::FirmwareUpdate).isWritable)
    {
        m_firmware.AbandonUpload();
    }
    m_open = {};
}

bool CFileAccess::IsActivationPending() const
{
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    return m_flash->firmware.status == EFirmwareStatus::ActivationPending;
}

} // namespace Simulator::Internal
