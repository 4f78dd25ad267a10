// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarefile.h"

#include <algorithm>
#include <array>
#include <vector>

namespace GenApi
{
namespace Internal
{
namespace
{

// SFNC, File Access Control.
constexpr char FileSelector[] = "FileSelector";
constexpr char FileOpenMode[] = "FileOpenMode";
constexpr char FileOperationSelector[] = "FileOperationSelector";
constexpr char FileOperationExecute[] = "FileOperationExecute";
constexpr char FileAccessBuffer[] = "FileAccessBuffer";
constexpr char FileAccessOffset[] = "FileAccessOffset";
constexpr char FileAccessLength[] = "FileAccessLength";
constexpr char FileOperationStatus[] = "FileOperationStatus";
constexpr char FileOperationResult[] = "FileOperationResult";
constexpr char FileSize[] = "FileSize";
constexpr char StatusSuccess[] = "Success";

// Larger blocks bring nothing and would let progress stand still for long.
constexpr std::int64_t MaxBlockBytes = 1 << 20;
constexpr std::size_t RegisterAlignment = 4; // GigE Vision memory accesses: a multiple of 4 bytes

template <class T> T& Require(INodeMap& nodeMap, const char* name)
{
    INode* const node = nodeMap.GetNode(name);
    T* const typed = dynamic_cast<T*>(node);
    if (typed == nullptr || !IsImplemented(node))
    {
        GENICAM_THROW(LogicalErrorException,
                      "The camera has no feature '" + std::string(name) + "', which uploading a file needs");
    }
    return *typed;
}

bool HasEntry(IEnumeration& choice, const std::string& entry)
{
    return IsImplemented(choice.GetEntryByName(entry));
}

void RequireEntry(INodeMap& nodeMap, const char* name, const std::string& entry)
{
    if (!HasEntry(Require<IEnumeration>(nodeMap, name), entry))
    {
        GENICAM_THROW(LogicalErrorException, "The camera's feature '" + std::string(name) + "' has no entry '" + entry +
                                                 "', which uploading a file needs");
    }
}

} // namespace

void CheckDeviceFile(const SFirmwareStep& step, INodeMap& nodeMap)
{
    RequireEntry(nodeMap, FileSelector, step.deviceFile);
    RequireEntry(nodeMap, FileOpenMode, "Write");
    for (const char* const operation : {"Open", "Write", "Close"})
    {
        RequireEntry(nodeMap, FileOperationSelector, operation);
    }
    Require<ICommand>(nodeMap, FileOperationExecute);
    Require<IRegister>(nodeMap, FileAccessBuffer);
    Require<IInteger>(nodeMap, FileAccessOffset);
    Require<IInteger>(nodeMap, FileAccessLength);
    Require<IEnumeration>(nodeMap, FileOperationStatus);
    Require<IInteger>(nodeMap, FileOperationResult);
    if (step.verify == EFirmwareVerify::ReadBack)
    {
        RequireEntry(nodeMap, FileOpenMode, "Read");
        RequireEntry(nodeMap, FileOperationSelector, "Read");
    }
    if (step.verify == EFirmwareVerify::Crc32)
    {
        Require<IInteger>(nodeMap, step.crcFeature.c_str());
    }
}

CDeviceFile::CDeviceFile(INodeMap& nodeMap, std::string name, std::uint32_t timeoutMs, IFirmwareClock& clock)
    : m_nodeMap(nodeMap), m_name(std::move(name)), m_timeoutMs(timeoutMs), m_clock(clock)
{
}

CDeviceFile::~CDeviceFile()
{
    CloseQuietly();
}

template <class T> T& CDeviceFile::Node(const char* name) const
{
    return Require<T>(m_nodeMap, name);
}

void CDeviceFile::Select()
{
    Node<IValue>(FileSelector).FromString(m_name);
}

std::string CDeviceFile::Status()
{
    return Node<IValue>(FileOperationStatus).ToString(false, true).str();
}

bool CDeviceFile::Run(const char* operation)
{
    Node<IValue>(FileOperationSelector).FromString(operation);
    ExecuteAndWait(Node<ICommand>(FileOperationExecute), std::string(FileOperationExecute) + " (" + operation + ")",
                   m_timeoutMs, m_clock, [](double) {});
    return Status() == StatusSuccess;
}

void CDeviceFile::Open(const char* mode)
{
    Select();
    Node<IValue>(FileOpenMode).FromString(mode);
    if (!Run("Open"))
    {
        // Who was interrupted in an earlier update left it open.
        Run("Close");
        if (!Run("Open"))
        {
            GENICAM_THROW(RuntimeException, "The camera's file '" + m_name + "' cannot be opened with the mode '" +
                                                mode + "': the camera reports '" + Status() + "'");
        }
    }
    m_isOpen = true;
    m_blocks.reset();
}

void CDeviceFile::OpenForContinuing()
{
    Select();
    constexpr char Keeping[] = "ReadWrite";
    Open(HasEntry(Node<IEnumeration>(FileOpenMode), Keeping) ? Keeping : "Write");
}

void CDeviceFile::Close()
{
    if (!m_isOpen)
    {
        return;
    }
    m_isOpen = false;
    if (!Run("Close"))
    {
        GENICAM_THROW(RuntimeException,
                      "The camera's file '" + m_name + "' cannot be closed: the camera reports '" + Status() + "'");
    }
}

void CDeviceFile::CloseQuietly() noexcept
{
    try
    {
        Close();
    }
    catch (const std::exception&)
    {
        // Called on the way out of a failure that says more; the file is closed before the next opening.
        m_isOpen = false;
    }
}

bool CDeviceFile::CanBeRead()
{
    Select();
    return HasEntry(Node<IEnumeration>(FileOpenMode), "Read") &&
           HasEntry(Node<IEnumeration>(FileOperationSelector), "Read") &&
           IsReadable(&Node<IRegister>(FileAccessBuffer));
}

std::optional<std::uint64_t> CDeviceFile::Size()
{
    Select();
    INode* const node = m_nodeMap.GetNode(FileSize);
    auto* const size = dynamic_cast<IInteger*>(node);
    if (size == nullptr || !IsReadable(node))
    {
        return std::nullopt;
    }
    const std::int64_t bytes = size->GetValue(false, true);
    return bytes < 0 ? std::nullopt : std::optional<std::uint64_t>(static_cast<std::uint64_t>(bytes));
}

CDeviceFile::SBlocks CDeviceFile::Blocks()
{
    if (m_blocks)
    {
        return *m_blocks;
    }
    IInteger& length = Node<IInteger>(FileAccessLength);
    const std::int64_t increment = std::max<std::int64_t>(length.GetInc(), 1);
    const auto roundDown = [&](std::int64_t bytes)
    {
        return bytes - bytes % increment;
    };
    std::int64_t max = roundDown(std::min(length.GetMax(), MaxBlockBytes));
    if (max > 0)
    {
        // The buffer's length may follow the length that is set.
        length.SetValue(max);
        max = roundDown(std::min(max, Node<IRegister>(FileAccessBuffer).GetLength()));
    }
    if (max <= 0)
    {
        GENICAM_THROW(LogicalErrorException, "The camera's file '" + m_name +
                                                 "' takes no data: the largest block has " + std::to_string(max) +
                                                 " bytes");
    }
    m_blocks = SBlocks{max, increment};
    return *m_blocks;
}

void CDeviceFile::CheckSize(std::uint64_t bytes)
{
    const std::int64_t increment = Blocks().increment;
    if (bytes % static_cast<std::uint64_t>(increment) != 0)
    {
        GENICAM_THROW(LogicalErrorException, "The camera's file '" + m_name + "' takes multiples of " +
                                                 std::to_string(increment) + " bytes only; the update's file has " +
                                                 std::to_string(bytes));
    }
}

std::size_t CDeviceFile::SetBlock(std::uint64_t offset, std::size_t wanted)
{
    const std::size_t bytes = std::min(wanted, static_cast<std::size_t>(Blocks().max));
    Node<IInteger>(FileAccessOffset).SetValue(static_cast<std::int64_t>(offset));
    Node<IInteger>(FileAccessLength).SetValue(static_cast<std::int64_t>(bytes));
    return bytes;
}

std::size_t CDeviceFile::Transferred(std::size_t wanted, const char* operation)
{
    const std::int64_t result = Node<IInteger>(FileOperationResult).GetValue(false, true);
    if (result <= 0 || static_cast<std::uint64_t>(result) > wanted)
    {
        GENICAM_THROW(RuntimeException, "The camera's file '" + m_name + "': the operation '" + operation + "' of " +
                                            std::to_string(wanted) + " bytes reports " + std::to_string(result) +
                                            " bytes");
    }
    return static_cast<std::size_t>(result);
}

std::size_t CDeviceFile::WriteBlock(std::uint64_t offset, std::string_view bytes)
{
    const std::size_t block = SetBlock(offset, bytes.size());
    IRegister& buffer = Node<IRegister>(FileAccessBuffer);
    // What is behind the length does not count for the device; it only makes the access even.
    const std::size_t even = (block + RegisterAlignment - 1) / RegisterAlignment * RegisterAlignment;
    std::vector<std::uint8_t> data(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(block));
    data.resize(std::max(block, std::min(even, static_cast<std::size_t>(buffer.GetLength()))));
    buffer.Set(data.data(), static_cast<std::int64_t>(data.size()));
    if (!Run("Write"))
    {
        GENICAM_THROW(RuntimeException, "The camera's file '" + m_name + "' cannot be written at offset " +
                                            std::to_string(offset) + ": the camera reports '" + Status() + "'");
    }
    return Transferred(block, "Write");
}

std::string CDeviceFile::ReadBlock(std::uint64_t offset, std::size_t maxBytes)
{
    const std::size_t block = SetBlock(offset, maxBytes);
    if (!Run("Read"))
    {
        GENICAM_THROW(RuntimeException, "The camera's file '" + m_name + "' cannot be read at offset " +
                                            std::to_string(offset) + ": the camera reports '" + Status() + "'");
    }
    const std::size_t got = Transferred(block, "Read");
    IRegister& buffer = Node<IRegister>(FileAccessBuffer);
    std::string bytes(std::max(got, static_cast<std::size_t>(std::max<std::int64_t>(buffer.GetLength(), 0))), '\0');
    buffer.Get(reinterpret_cast<std::uint8_t*>(bytes.data()), buffer.GetLength(), false, true);
    bytes.resize(got);
    return bytes;
}

} // namespace Internal
} // namespace GenApi
