// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameramodel.h"
#include "simulator/registers.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace SimulatorTest
{

/** An application that works with a camera's files by its registers, so that faults strike it. */
class CFileClient
{
public:
    static constexpr std::uint32_t FirmwareUpdate = 0;
    static constexpr std::uint32_t UserFile1 = 1;
    static constexpr std::uint32_t Open = 0;
    static constexpr std::uint32_t Close = 1;
    static constexpr std::uint32_t Read = 2;
    static constexpr std::uint32_t Write = 3;
    static constexpr std::uint32_t Delete = 4;
    static constexpr std::uint32_t ModeRead = 0;
    static constexpr std::uint32_t ModeWrite = 1;
    static constexpr std::uint32_t ModeReadWrite = 2;

    CFileClient(Simulator::CCameraModel& camera, std::uint32_t file) : m_camera(camera), m_file(file) {}

    /** Does the operation; returns its status. */
    std::string Do(std::uint32_t operation)
    {
        Put(Simulator::Register::FileSelector, m_file);
        Put(Simulator::Register::FileOperationSelector, operation);
        Put(Simulator::Register::FileOperationExecute, 1);
        return m_camera.GetFeature("FileOperationStatus");
    }
    std::string DoOpen(std::uint32_t mode)
    {
        Put(Simulator::Register::FileOpenMode + 4 * m_file, mode);
        return Do(Open);
    }
    std::string DoWrite(std::uint32_t offset, const std::vector<std::uint8_t>& bytes)
    {
        Put(Simulator::Register::FileAccessOffset, offset);
        Put(Simulator::Register::FileAccessLength, static_cast<std::uint32_t>(bytes.size()));
        m_camera.Write(bytes.data(), Simulator::Register::FileAccessBuffer, static_cast<std::int64_t>(bytes.size()));
        return Do(Write);
    }
    std::string DoRead(std::uint32_t offset, std::uint32_t length)
    {
        Put(Simulator::Register::FileAccessOffset, offset);
        Put(Simulator::Register::FileAccessLength, length);
        return Do(Read);
    }
    /** What the last operation read. */
    std::vector<std::uint8_t> Buffer()
    {
        std::vector<std::uint8_t> bytes(Result());
        m_camera.Read(bytes.data(), Simulator::Register::FileAccessBuffer, static_cast<std::int64_t>(bytes.size()));
        return bytes;
    }
    std::uint32_t Result()
    {
        return static_cast<std::uint32_t>(std::stoul(m_camera.GetFeature("FileOperationResult")));
    }
    std::uint32_t Size()
    {
        Put(Simulator::Register::FileSelector, m_file);
        return static_cast<std::uint32_t>(std::stoul(m_camera.GetFeature("FileSize")));
    }
    /** Opens, writes all, closes; returns the status of Close, or of the operation that failed. */
    std::string Upload(const std::vector<std::uint8_t>& bytes)
    {
        std::string status = DoOpen(ModeWrite);
        for (std::size_t at = 0; at < bytes.size() && status == "Success";)
        {
            const std::size_t part = std::min<std::size_t>(bytes.size() - at, 512);
            const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(at);
            status = DoWrite(static_cast<std::uint32_t>(at), {first, first + static_cast<std::ptrdiff_t>(part)});
            at += Result();
        }
        return status == "Success" ? Do(Close) : status;
    }
    void Put(std::int64_t address, std::uint32_t value)
    {
        const std::array<std::uint8_t, 4> b = {
            static_cast<std::uint8_t>(value >> 24U), static_cast<std::uint8_t>(value >> 16U),
            static_cast<std::uint8_t>(value >> 8U), static_cast<std::uint8_t>(value)};
        m_camera.Write(b.data(), address, 4);
    }

private:
    Simulator::CCameraModel& m_camera;
    const std::uint32_t m_file;
};

} // namespace SimulatorTest
