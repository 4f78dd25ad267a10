// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/chunkparser.h"
#include "transport/transport.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Test
{

/** What a scripted transport counts, can fail at and can run a hook at. */
enum class EStep
{
    CreateTl, // CTlFactory::CreateTl; a fault makes it answer null
    EnumerateInterfaces,
    EnumerateDevices,    // ordinary discovery
    EnumerateAllDevices, // discovery with the scope All
    AnnounceRemoteDevice,
    IssueAction,
    CreateInterface,
    DestroyInterface, // cannot fail
    OpenInterface,
    CloseInterface,
    CreateDevice,
    DestroyDevice, // cannot fail
    OpenControl,
    OpenMonitor,
    CloseDevice,
    StartEvents,
    OpenStream,
    CloseStream,
    GetPayloadBytes,
    AnnounceBuffer,
    RevokeBuffer,
    QueueBuffer,
    StartStream,
    StopStream,
    RetrieveResult,
    ReadRegister,
    WriteRegister,
    AcquisitionStart, // the camera's command, counted when written
    AcquisitionStop,
    DeviceReset,
    CreateChunkParser,
    DestroyChunkParser,
    AttachChunkBuffer,
    DetachChunkBuffer,
    Count
};

/** What is thrown. */
enum class EFault
{
    None,
    Runtime,  // GenICam::RuntimeException
    Access,   // GenICam::AccessException
    Logical,  // GenICam::LogicalErrorException
    Timeout,  // GenICam::TimeoutException
    BadAlloc, // GenICam::BadAllocException
    Standard, // std::runtime_error
    Unknown   // an int
};

/** A camera of a scripted transport. Empty texts are filled in from the others. */
struct SScriptedCamera
{
    std::string serialNumber = "1001"; // unique on its transport
    std::string vendorName = "TestVendor";
    std::string modelName = "TestModel";
    std::string userDefinedName; // "": the record has none
    std::string deviceVersion = "1.0.0";
    std::string friendlyName; // "<model> (<serial>)"
    std::string fullName;     // "<device class>/<serial>"
    std::string interfaceId;
    std::vector<std::pair<std::string, std::string>> moreProperties; // of the record
    bool onlyInAll = false;                                          // seen by the scope All alone
    std::string inUseBy;                                             // not "": opening for control is refused
    std::int64_t width = 64;
    std::int64_t height = 48;
    std::uint64_t payloadBytes = 64 * 48; // the camera's own
    std::uint64_t streamPayloadBytes = 0; // the stream grabber's; 0: as the camera's
    bool hasStream = true;
    bool hasPayloadSize = true; // of the camera and of its stream
    bool hasClearBufferModeEnable = true;
    bool hasTransmissionType = false; // of the stream
    bool hasChunks = false;           // a chunk parser, and the feature ChunkModeActive
    bool hasCompression = false;      // the features ImageCompression*; off until a test sets their registers
    bool hasTLParamsLocked = true;
    bool hasTLNodeMap = true;
    bool hasEventGrabber = false;
    std::string description; // not "": GenICam XML in place of the usual one
};

/** What the camera sends as one image. */
struct SScriptedImage
{
    Velmo::Transport::EResultStatus status = Velmo::Transport::EResultStatus::Ok;
    Velmo::EPayloadType payloadType = Velmo::EPayloadType::Image;
    std::uint32_t pixelType = 0x01080001; // PFNC, Mono8
    std::vector<std::uint8_t> data;       // copied into the buffer
    std::size_t payloadBytes = 0;         // 0: the size of data, or the whole buffer when there is none
    std::uint64_t blockId = 0;            // 0: one more than the last
    std::uint64_t timestamp = 0;
    std::uint32_t errorCode = 0;
    std::string errorDescription;
};

/** A value that was written to a feature of a camera: numbers in decimal, texts as they are. */
struct SWrite
{
    std::string feature;
    std::string value;
};

/** What a chunk parser was given. */
struct SChunkBuffer
{
    const void* pBuffer = nullptr;
    std::int64_t bytes = 0;
    std::int64_t layoutId = -1;
    std::size_t* pChunkOffset = nullptr;
};

struct SScriptedTransportConfig
{
    std::string deviceClass = "TestScripted";
    std::string tlType = "Custom";
    std::string friendlyName = "Scripted"; // of the transport layer
    std::string fullName;                  // "": the device class
    bool gige = false;                     // offers the GigE extension
};

class CScript;
struct SScriptedTransportState;

/**
 * A transport that does what a test tells it to: cameras and interfaces come and go, every step can fail, images are
 * delivered on command. Without interfaces it reports one "DefaultInterface".
 *
 * Cameras are named by serial number in every function; one that is not there fails the function with
 * std::out_of_range. Threads: any.
 */
class CScriptedTransport final : public Velmo::Transport::ITransport, private Velmo::Transport::IGigEExtension
{
public:
    explicit CScriptedTransport(SScriptedTransportConfig config = {});
    ~CScriptedTransport() override;

    // The world.
    void AddInterface(const Velmo::CInterfaceInfo& info);
    void AddInterface(const std::string& interfaceId);
    void RemoveInterface(const std::string& interfaceId);
    /** Replaces an earlier one of that serial number, whose devices stay as removed as they were. */
    void AddCamera(const SScriptedCamera& camera);
    /** The camera vanishes; open devices report their removal, so many times (0: not at all), on a thread of the
     *  transport. Returns once all of them were told when asked to wait; then never call it within such a report. */
    void RemoveCamera(const std::string& serialNumber, unsigned int reports = 1, bool wait = true);
    void SetUserDefinedName(const std::string& serialNumber, const std::string& name);
    void SetInUseBy(const std::string& serialNumber, const std::string& owner);
    /** Cameras that AnnounceRemoteDevice finds at that address; it then is enumerated. */
    void SetRemoteCamera(const std::string& ipAddress, const SScriptedCamera& camera);
    /** What every action command draws, in that order, even those that expect fewer. */
    void SetActionAnswers(const std::vector<Velmo::Transport::SActionAnswer>& answers);

    // The script. An empty serial number means every camera.
    /** The next `times` passes through that step throw; negative: all until it is taken back with EFault::None. */
    void SetFault(EStep step, EFault fault, const std::string& text = "scripted fault",
                  const std::string& serialNumber = "", int times = -1);
    /** Runs on the thread that takes that step, before its fault. Null takes it away. */
    void SetHook(EStep step, std::function<void(const std::string& serialNumber)> hook);

    // Images.
    /** Fills the oldest queued buffer; false when the stream is not started or no buffer is queued (the image is
     *  lost, its block id is used up). */
    bool DeliverImage(const std::string& serialNumber, const SScriptedImage& image = {});
    /** Returns how many were not lost. */
    std::size_t DeliverImages(const std::string& serialNumber, std::size_t count);
    /** Waits for that many queued buffers of a started stream. */
    bool WaitForQueued(const std::string& serialNumber, std::size_t count, unsigned int timeoutMs = 30000);
    std::size_t GetQueuedCount(const std::string& serialNumber) const;
    std::size_t GetAnnouncedCount(const std::string& serialNumber) const;

    // What happened.
    /** Passes through the step, those that failed included; of one camera or of all. */
    unsigned int GetCount(EStep step, const std::string& serialNumber = "") const;
    bool WaitForCount(EStep step, unsigned int count, unsigned int timeoutMs = 30000) const;
    void ResetCounts();
    /** Every written feature in order. */
    std::vector<SWrite> GetWrites(const std::string& serialNumber) const;
    /** The last value written to that feature, "" when none. */
    std::string GetLastWrite(const std::string& serialNumber, const std::string& feature) const;
    /** The present value of a feature's register (a number). */
    std::int64_t GetRegister(const std::string& serialNumber, const std::string& feature) const;
    void SetRegister(const std::string& serialNumber, const std::string& feature, std::int64_t value);
    /** Of a feature that is a register; its length is the bytes' then. Throws std::out_of_range for too many. */
    void SetBytes(const std::string& serialNumber, const std::string& feature, const std::vector<std::uint8_t>& bytes);
    /** Every buffer that a chunk parser was given, in order; those that failed included. */
    std::vector<SChunkBuffer> GetChunkBuffers(const std::string& serialNumber) const;
    /** Devices that exist and are open now. */
    unsigned int GetOpenDevices(const std::string& serialNumber) const;
    unsigned int GetLivingDevices() const;
    unsigned int GetLivingInterfaces() const;
    /** Every action command that was issued, in order. */
    std::vector<Velmo::Transport::SActionCommand> GetActions() const;
    /** The record as an enumeration reports it. */
    Velmo::CDeviceInfo GetDeviceInfo(const std::string& serialNumber) const;

    // ITransport
    Velmo::CTlInfo GetTlInfo() const override;
    void EnumerateInterfaces(Velmo::InterfaceInfoList& list) override;
    void EnumerateDevices(Velmo::DeviceInfoList& list, Velmo::Transport::EDiscoveryScope scope) override;
    std::unique_ptr<Velmo::IVelmoDevice> CreateDevice(const Velmo::CDeviceInfo& info) override;
    std::unique_ptr<Velmo::Transport::IInterface> CreateInterface(const Velmo::CInterfaceInfo& info) override;
    GenApi::INodeMap* GetNodeMap() override { return nullptr; }
    Velmo::Transport::IGigEExtension* GetGigEExtension() override;

private:
    bool AnnounceRemoteDevice(const Velmo::CDeviceInfo& info) override;
    std::vector<Velmo::Transport::SActionAnswer> IssueAction(const Velmo::Transport::SActionCommand& command) override;

    const SScriptedTransportConfig m_config;
    const std::shared_ptr<CScript> m_script;
    const std::shared_ptr<SScriptedTransportState> m_state;
};

/**
 * Runs the SDK with these transports alone, in that order, for as long as it lives: built-in transports off,
 * registered, initialised once; everything undone at the end.
 */
class CScriptedSdk
{
public:
    explicit CScriptedSdk(std::vector<std::shared_ptr<CScriptedTransport>> transports);
    ~CScriptedSdk();
    CScriptedSdk(const CScriptedSdk&) = delete;
    CScriptedSdk& operator=(const CScriptedSdk&) = delete;

    void Add(const std::shared_ptr<CScriptedTransport>& transport);
    void Remove(const std::shared_ptr<CScriptedTransport>& transport);
    /** Transport-layer handles of that class that were created and not yet released. */
    unsigned int GetHeldTransportLayers(const std::string& deviceClass) const;

private:
    std::vector<std::shared_ptr<CScriptedTransport>> m_transports;
};

} // namespace Test
