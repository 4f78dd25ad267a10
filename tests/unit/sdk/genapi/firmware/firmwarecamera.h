// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/firmwareupdate.h"
#include "genapi/internal/firmwarechecksum.h"
#include "genapi/internal/firmwareclock.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/**
 * The registers of a camera whose firmware is a file, and whose power can go at any write.
 *
 * The firmware file "FW:<version>\n..." becomes the version that runs when it was activated and the camera reset.
 */
class CFirmwareCamera : public GenApi::IPort
{
public:
    static constexpr std::int64_t Model = 0, Version = 0x20, Selector = 0x100, OpenMode = 0x104, Operation = 0x108,
                                  Execute = 0x10C, Offset = 0x110, Length = 0x114, Status = 0x118, Result = 0x11C,
                                  Size = 0x120, Crc = 0x124, Activate = 0x200, UpdateMode = 0x204, Temperature = 0x208,
                                  Slow = 0x20C, Buffer = 0x1000;
    static constexpr std::int64_t BufferBytes = 64;

    CFirmwareCamera() : m_memory(0x1000 + BufferBytes)
    {
        PutText(Model, "Testcam 12");
        PutText(Version, "Fw 1.0.0 build 7");
        Put(Temperature, 40);
    }

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RW; }

    void Read(void* buffer, std::int64_t address, std::int64_t length) override
    {
        RequirePower();
        if (onRead)
        {
            onRead(address);
        }
        if (address == Size)
        {
            Put(Size, static_cast<std::uint32_t>(file.size()));
        }
        if (address == Crc)
        {
            Put(Crc, GenApi::Internal::Crc32(file) ^ crcError);
        }
        if (address == Execute && busyReads > 0)
        {
            --busyReads;
            Put(Execute, busyReads > 0 ? 1 : 0);
        }
        std::memcpy(buffer, At(address, length), static_cast<std::size_t>(length));
    }

    void Write(const void* buffer, std::int64_t address, std::int64_t length) override
    {
        RequirePower();
        if (writes++ == failingWrite)
        {
            hasPower = false;
            RequirePower();
        }
        if (onWrite)
        {
            onWrite(address);
        }
        std::memcpy(At(address, length), buffer, static_cast<std::size_t>(length));
        if (address == Execute)
        {
            Put(Execute, busyReads > 0 ? 1 : 0);
            RunOperation();
        }
        if (address == Activate)
        {
            Put(Activate, 0);
            isActivated = true;
        }
    }

    /** Whatever was open or half done is gone; an activated file runs. */
    void Restart()
    {
        hasPower = true;
        isOpen = false;
        Put(UpdateMode, 0);
        if (isActivated && file.compare(0, 3, "FW:") == 0)
        {
            PutText(Version, "Fw " + file.substr(3, file.find('\n') - 3) + " build 8");
        }
        isActivated = false;
    }

    std::string RunningVersion() const { return reinterpret_cast<const char*>(m_memory.data()) + Version; }
    std::uint32_t Get(std::int64_t address) const
    {
        std::uint32_t value = 0;
        std::memcpy(&value, m_memory.data() + address, sizeof(value));
        return value;
    }
    void Put(std::int64_t address, std::uint32_t value)
    {
        std::memcpy(m_memory.data() + address, &value, sizeof(value));
    }
    void PutText(std::int64_t address, const std::string& text)
    {
        std::vector<char> bytes(0x20);
        text.copy(bytes.data(), bytes.size() - 1);
        std::memcpy(m_memory.data() + address, bytes.data(), bytes.size());
    }

    std::string file; // on the device, whatever it holds
    bool isOpen = false;
    bool isActivated = false;
    bool truncatesOnOpen = true;
    bool closesWell = true;
    std::uint32_t crcError = 0;
    std::uint32_t takesAtMost = BufferBytes; // of one block
    int busyReads = 0;                       // of the next execution
    int writes = 0;
    int failingWrite = -1;
    bool hasPower = true;
    std::vector<std::string> operations;
    std::function<void(std::int64_t address)> onRead;
    std::function<void(std::int64_t address)> onWrite;
    std::function<void()> afterOperation;

private:
    std::uint8_t* At(std::int64_t address, std::int64_t length)
    {
        if (address < 0 || length < 0 || static_cast<std::size_t>(address + length) > m_memory.size())
        {
            GENICAM_THROW(AccessException, "no such register");
        }
        return m_memory.data() + address;
    }

    void RequirePower() const
    {
        if (!hasPower)
        {
            GENICAM_THROW(AccessException, "the camera does not answer");
        }
    }

    void RunOperation()
    {
        static const char* const Names[] = {"Open", "Close", "Read", "Write"};
        const std::uint32_t operation = Get(Operation);
        operations.push_back(Names[operation]);
        Put(Status, Operate(operation) ? 0 : 1);
        if (afterOperation)
        {
            afterOperation();
        }
    }

    bool Operate(std::uint32_t operation)
    {
        const std::uint32_t mode = Get(OpenMode); // Read, Write, ReadWrite
        const bool isForWriting = mode != 0;
        const std::size_t offset = Get(Offset);
        const std::uint32_t length = std::min(Get(Length), takesAtMost);
        Put(Result, 0);
        switch (operation)
        {
        case 0:
            if (isOpen)
            {
                return false;
            }
            isOpen = true;
            if (mode == 1 && truncatesOnOpen)
            {
                file.clear();
            }
            return true;
        case 1:
        {
            const bool wasOpen = isOpen;
            isOpen = false;
            return wasOpen && closesWell;
        }
        case 2:
        {
            if (!isOpen || mode == 1 || offset > file.size())
            {
                return false;
            }
            const std::string part = file.substr(offset, length);
            std::memcpy(m_memory.data() + Buffer, part.data(), part.size());
            Put(Result, static_cast<std::uint32_t>(part.size()));
            return true;
        }
        default:
            if (!isOpen || !isForWriting)
            {
                return false;
            }
            file.resize(std::max<std::size_t>(file.size(), offset + length));
            std::memcpy(file.data() + offset, m_memory.data() + Buffer, length);
            Put(Result, length);
            return true;
        }
    }

    std::vector<std::uint8_t> m_memory;
};

/** Its description; more nodes may be added, and any part replaced. */
inline std::string FirmwareCameraXml(const std::string& more = {})
{
    const auto at = [](std::int64_t address, int length, const char* mode)
    {
        return "<Address>" + std::to_string(address) + "</Address><Length>" + std::to_string(length) +
               "</Length><AccessMode>" + mode + "</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable>";
    };
    const auto reg = [&](const std::string& name, std::int64_t address, const char* mode)
    {
        return "<IntReg Name=\"" + name + "\">" + at(address, 4, mode) +
               "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
    };
    const auto choice =
        [&](const std::string& name, std::int64_t address, const char* mode, const std::vector<std::string>& entries)
    {
        std::string text = "<Enumeration Name=\"" + name + "\">";
        for (std::size_t i = 0; i < entries.size(); ++i)
        {
            text += "<EnumEntry Name=\"" + entries[i] + "\"><Value>" + std::to_string(i) + "</Value></EnumEntry>";
        }
        return text + "<pValue>" + name + "Reg</pValue></Enumeration>\n" + reg(name + "Reg", address, mode);
    };
    const auto command = [&](const std::string& name, std::int64_t address)
    {
        return "<Command Name=\"" + name + "\"><pValue>" + name +
               "Reg</pValue><CommandValue>1</CommandValue></Command>\n" + reg(name + "Reg", address, "RW");
    };
    using Camera = CFirmwareCamera;
    return "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"Testcam\" VendorName=\"Tests\" "
           "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
           "MinorVersion=\"0\" SubMinorVersion=\"0\">\n"
           "<StringReg Name=\"DeviceModelName\">" +
           at(Camera::Model, 32, "RO") + "</StringReg>\n<StringReg Name=\"DeviceFirmwareVersion\">" +
           at(Camera::Version, 32, "RO") + "</StringReg>\n" +
           choice("FileSelector", Camera::Selector, "RW", {"UserSet1", "FirmwareUpdate"}) +
           choice("FileOpenMode", Camera::OpenMode, "RW", {"Read", "Write", "ReadWrite"}) +
           choice("FileOperationSelector", Camera::Operation, "RW", {"Open", "Close", "Read", "Write"}) +
           command("FileOperationExecute", Camera::Execute) + reg("FileAccessOffset", Camera::Offset, "RW") +
           "<Integer Name=\"FileAccessLength\"><pValue>FileAccessLengthReg</pValue><Min>0</Min><Max>" +
           std::to_string(Camera::BufferBytes) + "</Max><Inc>1</Inc></Integer>\n" +
           reg("FileAccessLengthReg", Camera::Length, "RW") +
           choice("FileOperationStatus", Camera::Status, "RO", {"Success", "Failure"}) +
           reg("FileOperationResult", Camera::Result, "RO") + reg("FileSize", Camera::Size, "RO") +
           reg("FileCrc", Camera::Crc, "RO") + "<Register Name=\"FileAccessBuffer\">" +
           at(Camera::Buffer, static_cast<int>(Camera::BufferBytes), "RW") + "</Register>\n" +
           command("FirmwareActivate", Camera::Activate) + reg("UpdateMode", Camera::UpdateMode, "RW") +
           reg("DeviceTemperature", Camera::Temperature, "RO") + command("SlowCommand", Camera::Slow) + more +
           "<Port Name=\"Device\"/></RegisterDescription>";
}

/** The camera as the module sees it. */
class CFirmwareDevice : public GenApi::IFirmwareUpdatableDevice
{
public:
    explicit CFirmwareDevice(CFirmwareCamera& camera, std::string xml = FirmwareCameraXml())
        : camera(camera), xml(std::move(xml)), xmlAfterReset(this->xml)
    {
    }
    ~CFirmwareDevice() override
    {
        if (m_map)
        {
            m_map->Disconnect(&camera);
        }
    }

    void PrepareForFirmwareUpdate() override
    {
        calls.push_back("prepare");
        if (onPrepare)
        {
            onPrepare();
        }
        Open(xml);
    }
    GenApi::INodeMap& GetNodeMapOfDeviceToUpdate() override { return *m_map; }
    GenICam::gcstring GetDisplayName() override { return "Testcam (4711)"; }
    void DeviceResetWhileUpdatingFirmware(unsigned int expectedTimeMs, unsigned int waitTimeMs) override
    {
        calls.push_back("reset " + std::to_string(expectedTimeMs) + " " + std::to_string(waitTimeMs));
        camera.Restart();
        Open(xmlAfterReset);
    }
    void CleanupAfterFirmwareUpdate() override
    {
        calls.push_back("cleanup");
        if (onCleanup)
        {
            onCleanup();
        }
    }

    CFirmwareCamera& camera;
    std::string xml;
    std::string xmlAfterReset;
    std::vector<std::string> calls;
    std::function<void()> onPrepare;
    std::function<void()> onCleanup;

private:
    void Open(const std::string& description)
    {
        if (m_map)
        {
            m_map->Disconnect(&camera);
        }
        m_map = GenApi::CNodeMapFactory::FromData(description.data(), description.size()).CreateNodeMap();
        m_map->Connect(&camera);
    }

    std::unique_ptr<GenApi::INodeMap> m_map;
};

/** Time that passes only when it is waited for. */
class CTestClock : public GenApi::Internal::IFirmwareClock
{
public:
    ~CTestClock() override = default;
    std::int64_t NowMs() override { return now; }
    void PassMs(std::int64_t milliseconds) override
    {
        now += milliseconds;
        waits.push_back(milliseconds);
        if (onPass)
        {
            onPass();
        }
    }

    std::int64_t now = 1000;
    std::vector<std::int64_t> waits;
    std::function<void()> onPass;
};

/** Writes down what it is told; throws where a test asks for it. */
class CRecordingObserver : public GenApi::IFirmwareUpdateProgressObserver
{
public:
    ~CRecordingObserver() override = default;
    void OnFirmwareUpdateBegin(const GenApi::CFirmwareUpdateInfo& updateInfo, unsigned int estimatedDuration) override
    {
        version = updateInfo.GetInfo("Version", "");
        totalMs = estimatedDuration;
        Note("begin");
    }
    void OnFirmwareUpdateProgressStepBegin(GenApi::EFirmwareUpdateStepType step, unsigned int estimatedTime,
                                           const char* description) override
    {
        estimates.push_back(estimatedTime);
        descriptions.push_back(description == nullptr ? "(null)" : description);
        percents.emplace_back();
        Note("step " + std::to_string(static_cast<int>(step)));
    }
    void OnFirmwareUpdateProgressStepPartialProgress(GenApi::EFirmwareUpdateStepType, double percent) override
    {
        percents.back().push_back(percent);
        if (onProgress)
        {
            onProgress(percent);
        }
    }
    void OnFirmwareUpdateProgressStepEnd(GenApi::EFirmwareUpdateStepType step, unsigned int time) override
    {
        endTimes.push_back(time);
        Note("done " + std::to_string(static_cast<int>(step)));
    }
    void OnFirmwareUpdateEnd() override { Note("end"); }
    void OnFirmwareUpdateError(const GenICam::GenericException& e) override
    {
        error = e.GetDescription();
        kind = e.GetKind();
        Note("error");
    }

    std::vector<std::string> notes;
    std::vector<unsigned int> estimates;
    std::vector<unsigned int> endTimes;
    std::vector<std::string> descriptions;
    std::vector<std::vector<double>> percents; // of each step
    std::string version;
    std::string error;
    std::string kind;
    unsigned int totalMs = 0;
    std::function<void(const std::string& note)> onNote;
    std::function<void(double percent)> onProgress;

private:
    void Note(const std::string& note)
    {
        notes.push_back(note);
        if (onNote)
        {
            onNote(note);
        }
    }
};
