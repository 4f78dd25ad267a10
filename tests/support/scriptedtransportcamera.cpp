// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/scriptedtransportcamera.h"

#include <cstring>
#include <sstream>
#include <stdexcept>

namespace Test
{

namespace
{

constexpr std::size_t MemoryBytes = 0x400;
constexpr std::int64_t TextBytes = 64;

constexpr SRegister Registers[] = {
    {"AcquisitionMode", 0x000, 8},
    {"AcquisitionStart", 0x008, 8},
    {"AcquisitionStop", 0x010, 8},
    {"PayloadSize", 0x018, 8},
    {"Width", 0x020, 8},
    {"Height", 0x028, 8},
    {"ClearBufferModeEnable", 0x030, 8},
    {"TLParamsLocked", 0x038, 8},
    {"DeviceReset", 0x040, 8},
    {"ChunkModeActive", 0x048, 8},
    {"TriggerMode", 0x050, 8},
    {"PixelFormat", 0x058, 8},
    {"ExposureTime", 0x060, 8},
    {"StreamPayloadSize", 0x068, 8},
    {"TransmissionType", 0x070, 8},
    {"HeartbeatTimeout", 0x078, 8},
    {"ImageCompressionMode", 0x080, 8},
    {"ImageCompressionDescriptorLength", 0x088, 8},
    {"ImageCompressionDescriptorHashLength", 0x090, 8},
    {"ImageCompressionDecodedSize", 0x098, 8},
    {"ImageCompressionDescriptorHash", 0x0a0, 32},
    {"DeviceUserID", 0x100, TextBytes},
    {"DeviceSerialNumber", 0x140, TextBytes},
    {"DeviceModelName", 0x180, TextBytes},
    {"DeviceVendorName", 0x1c0, TextBytes},
    {"DeviceFirmwareVersion", 0x200, TextBytes},
    {"ImageCompressionDescriptor", 0x280, 128},
};

std::string Address(const char* feature)
{
    return std::to_string(CScriptedCamera::FindRegister(feature).address);
}

std::string IntReg(const std::string& name, const char* feature, const char* access)
{
    return "<IntReg Name=\"" + name + "\"><Address>" + Address(feature) + "</Address><Length>8</Length><AccessMode>" +
           access +
           "</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign>"
           "<Endianess>LittleEndian</Endianess></IntReg>\n";
}

std::string Integer(const char* feature, const char* access, bool lockedWhileGrabbing = false)
{
    const std::string name = feature;
    return "<Integer Name=\"" + name + "\">" + (lockedWhileGrabbing ? "<pIsLocked>TLParamsLocked</pIsLocked>" : "") +
           "<pValue>" + name + "Reg</pValue></Integer>\n" + IntReg(name + "Reg", feature, access);
}

std::string Boolean(const char* feature)
{
    const std::string name = feature;
    return "<Boolean Name=\"" + name + "\"><pValue>" + name + "Reg</pValue></Boolean>\n" +
           IntReg(name + "Reg", feature, "RW");
}

std::string Command(const char* feature)
{
    const std::string name = feature;
    return "<Command Name=\"" + name + "\"><pValue>" + name + "Reg</pValue><CommandValue>1</CommandValue></Command>\n" +
           IntReg(name + "Reg", feature, "RW");
}

std::string Text(const char* feature, const char* access)
{
    return "<StringReg Name=\"" + std::string(feature) + "\"><Address>" + Address(feature) + "</Address><Length>" +
           std::to_string(TextBytes) + "</Length><AccessMode>" + access +
           "</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable></StringReg>\n";
}

std::string Enumeration(const char* feature, const std::vector<std::pair<const char*, std::int64_t>>& entries)
{
    const std::string name = feature;
    std::string text = "<Enumeration Name=\"" + name + "\">";
    for (const auto& [symbolic, value] : entries)
    {
        text += "<EnumEntry Name=\"" + std::string(symbolic) + "\"><Value>" + std::to_string(value) +
                "</Value></EnumEntry>";
    }
    return text + "<pValue>" + name + "Reg</pValue></Enumeration>\n" + IntReg(name + "Reg", feature, "RW");
}

/** A register whose length is that of the register "<feature>Length". */
std::string Register(const char* feature)
{
    const std::string name = feature;
    const std::string length = name + "Length";
    return "<Register Name=\"" + name + "\"><Address>" + Address(feature) + "</Address><pLength>" + length +
           "</pLength><AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable></Register>\n" +
           IntReg(length, length.c_str(), "RO");
}

std::string Compression()
{
    return Enumeration("ImageCompressionMode", {{"Off", 0}, {"Lossless", 1}, {"FixedRatio", 2}}) +
           Register("ImageCompressionDescriptor") + Register("ImageCompressionDescriptorHash") +
           Integer("ImageCompressionDecodedSize", "RO");
}

/** Root lists the features; body defines them. */
std::string Wrap(const std::string& model, const std::vector<const char*>& features, const std::string& body)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"" + model +
                       "\" VendorName=\"TestVendor\" ToolTip=\"\" StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" "
                       "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" "
                       "SubMinorVersion=\"0\" ProductGuid=\"0\" VersionGuid=\"0\" "
                       "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n<Category Name=\"Root\">";
    for (const char* feature : features)
    {
        text += "<pFeature>" + std::string(feature) + "</pFeature>";
    }
    return text + "</Category>\n" + body + "<Port Name=\"Device\"/>\n</RegisterDescription>\n";
}

SScriptedCamera Completed(SScriptedCamera camera, const SScriptedTransportConfig& transport)
{
    if (camera.friendlyName.empty())
    {
        camera.friendlyName = camera.modelName + " (" + camera.serialNumber + ")";
    }
    if (camera.fullName.empty())
    {
        camera.fullName = transport.deviceClass + "/" + camera.serialNumber;
    }
    if (camera.streamPayloadBytes == 0)
    {
        camera.streamPayloadBytes = camera.payloadBytes;
    }
    return camera;
}

} // namespace

CScriptedCamera::CScriptedCamera(SScriptedCamera config, const SScriptedTransportConfig& transport,
                                 std::shared_ptr<CScript> script)
    : m_config(Completed(std::move(config), transport)), m_transport(transport), m_script(std::move(script)),
      m_memory(MemoryBytes), m_userDefinedName(m_config.userDefinedName), m_inUseBy(m_config.inUseBy)
{
    const auto poke = [this](const char* feature, std::uint64_t value)
    {
        m_memory.Poke(FindRegister(feature).address, value, 8);
    };
    poke("PayloadSize", m_config.payloadBytes);
    poke("StreamPayloadSize", m_config.streamPayloadBytes);
    poke("Width", static_cast<std::uint64_t>(m_config.width));
    poke("Height", static_cast<std::uint64_t>(m_config.height));
    poke("PixelFormat", 0x01080001);
    poke("ExposureTime", 10000);
    poke("HeartbeatTimeout", 3000);
    const auto pokeText = [this](const char* feature, const std::string& text)
    {
        m_memory.PokeText(FindRegister(feature).address, text, TextBytes);
    };
    pokeText("DeviceUserID", m_config.userDefinedName);
    pokeText("DeviceSerialNumber", m_config.serialNumber);
    pokeText("DeviceModelName", m_config.modelName);
    pokeText("DeviceVendorName", m_config.vendorName);
    pokeText("DeviceFirmwareVersion", m_config.deviceVersion);
}

Velmo::CDeviceInfo CScriptedCamera::GetDeviceInfo() const
{
    Velmo::CDeviceInfo info;
    info.SetDeviceClass(m_transport.deviceClass);
    info.SetTLType(m_transport.tlType);
    info.SetDeviceFactory(m_transport.deviceClass + " factory");
    info.SetFullName(m_config.fullName);
    info.SetFriendlyName(m_config.friendlyName);
    info.SetVendorName(m_config.vendorName);
    info.SetModelName(m_config.modelName);
    info.SetSerialNumber(m_config.serialNumber);
    info.SetDeviceVersion(m_config.deviceVersion);
    if (!m_config.interfaceId.empty())
    {
        info.SetPropertyValue(Velmo::Key::InterfaceID, m_config.interfaceId);
    }
    for (const auto& [name, value] : m_config.moreProperties)
    {
        info.SetPropertyValue(name, value);
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_userDefinedName.empty())
    {
        info.SetUserDefinedName(m_userDefinedName);
    }
    return info;
}

void CScriptedCamera::SetUserDefinedName(const std::string& name)
{
    m_memory.PokeText(FindRegister("DeviceUserID").address, name, TextBytes);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_userDefinedName = name;
}

std::string CScriptedCamera::GetInUseBy() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_inUseBy;
}

void CScriptedCamera::SetInUseBy(const std::string& owner)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_inUseBy = owner;
}

std::string CScriptedCamera::GetDescription() const
{
    if (!m_config.description.empty())
    {
        return m_config.description;
    }
    std::vector<const char*> features = {
        "AcquisitionMode",  "AcquisitionStart",     "AcquisitionStop",    "Width",
        "Height",           "TriggerMode",          "PixelFormat",        "ExposureTime",
        "DeviceReset",      "DeviceUserID",         "DeviceSerialNumber", "DeviceModelName",
        "DeviceVendorName", "DeviceFirmwareVersion"};
    std::string body = Enumeration("AcquisitionMode", {{"Continuous", 0}, {"SingleFrame", 1}, {"MultiFrame", 2}}) +
                       Enumeration("TriggerMode", {{"Off", 0}, {"On", 1}}) +
                       Enumeration("PixelFormat", {{"Mono8", 0x01080001}, {"Mono16", 0x01100007}}) +
                       Command("AcquisitionStart") + Command("AcquisitionStop") + Command("DeviceReset") +
                       Integer("Width", "RW", m_config.hasTLParamsLocked) +
                       Integer("Height", "RW", m_config.hasTLParamsLocked) + Integer("ExposureTime", "RW") +
                       Text("DeviceUserID", "RW") + Text("DeviceSerialNumber", "RO") + Text("DeviceModelName", "RO") +
                       Text("DeviceVendorName", "RO") + Text("DeviceFirmwareVersion", "RO");
    const auto add = [&](bool wanted, const char* feature, const std::string& text)
    {
        if (wanted)
        {
            features.push_back(feature);
            body += text;
        }
    };
    add(m_config.hasPayloadSize, "PayloadSize", Integer("PayloadSize", "RO"));
    add(m_config.hasClearBufferModeEnable, "ClearBufferModeEnable", Boolean("ClearBufferModeEnable"));
    add(m_config.hasChunks, "ChunkModeActive", Boolean("ChunkModeActive"));
    add(m_config.hasCompression, "ImageCompressionMode", Compression());
    add(m_config.hasTLParamsLocked, "TLParamsLocked", Integer("TLParamsLocked", "RW"));
    return Wrap(m_config.modelName, features, body);
}

std::string CScriptedCamera::GetStreamDescription() const
{
    std::vector<const char*> features;
    std::string body;
    if (m_config.hasPayloadSize)
    {
        features.push_back("PayloadSize");
        body += "<Integer Name=\"PayloadSize\"><pValue>PayloadSizeReg</pValue></Integer>\n" +
                IntReg("PayloadSizeReg", "StreamPayloadSize", "RO");
    }
    if (m_config.hasTransmissionType)
    {
        features.push_back("TransmissionType");
        body += Enumeration("TransmissionType", {{"Unicast", 0}, {"Multicast", 1}, {"UseCameraConfig", 2}});
    }
    return Wrap("StreamGrabber", features, body);
}

void CScriptedCamera::OnWrite(std::int64_t address, const void* data, std::int64_t length)
{
    const SRegister* pRegister = FindRegisterAt(address);
    if (pRegister == nullptr)
    {
        return;
    }
    const std::string feature = pRegister->feature;
    SWrite write{feature, ""};
    if (pRegister->bytes == 8)
    {
        std::int64_t value = 0;
        std::memcpy(&value, data, static_cast<std::size_t>(std::min<std::int64_t>(length, 8)));
        write.value = std::to_string(value);
    }
    else
    {
        const char* text = static_cast<const char*>(data);
        write.value.assign(text, strnlen(text, static_cast<std::size_t>(length)));
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (feature == "DeviceUserID")
    {
        m_userDefinedName = write.value;
    }
    m_writes.push_back(std::move(write));
}

std::vector<SWrite> CScriptedCamera::GetWrites() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_writes;
}

void CScriptedCamera::AddChunkBuffer(const SChunkBuffer& buffer)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_chunkBuffers.push_back(buffer);
}

std::vector<SChunkBuffer> CScriptedCamera::GetChunkBuffers() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_chunkBuffers;
}

const SRegister& CScriptedCamera::FindRegister(const std::string& feature)
{
    for (const SRegister& entry : Registers)
    {
        if (feature == entry.feature)
        {
            return entry;
        }
    }
    throw std::out_of_range("no register of the feature " + feature);
}

const SRegister* CScriptedCamera::FindRegisterAt(std::int64_t address)
{
    for (const SRegister& entry : Registers)
    {
        if (address == entry.address)
        {
            return &entry;
        }
    }
    return nullptr;
}

bool CScriptedCamera::TakeControl(const void* pDevice)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_pController != nullptr && m_pController != pDevice)
    {
        return false;
    }
    m_pController = pDevice;
    return true;
}

void CScriptedCamera::ReleaseControl(const void* pDevice)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_pController == pDevice)
    {
        m_pController = nullptr;
    }
}

void CScriptedPort::CheckThere() const
{
    if (m_camera->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera '" + m_camera->GetSerialNumber() + "' has been removed.");
    }
}

void CScriptedPort::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    m_camera->GetScript().Pass(EStep::ReadRegister, m_camera->GetSerialNumber());
    CheckThere();
    m_camera->GetMemory().Read(buffer, address, length);
}

void CScriptedPort::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    CScript& script = m_camera->GetScript();
    script.Pass(EStep::WriteRegister, m_camera->GetSerialNumber());
    CheckThere();
    if (!m_writable)
    {
        GENICAM_THROW(AccessException, "The camera is open for monitoring only.");
    }
    const SRegister* pRegister = CScriptedCamera::FindRegisterAt(address);
    const std::string feature = pRegister == nullptr ? "" : pRegister->feature;
    const bool isCommand = feature == "AcquisitionStart" || feature == "AcquisitionStop" || feature == "DeviceReset";
    if (isCommand)
    {
        script.Pass(feature == "AcquisitionStart"  ? EStep::AcquisitionStart
                    : feature == "AcquisitionStop" ? EStep::AcquisitionStop
                                                   : EStep::DeviceReset,
                    m_camera->GetSerialNumber());
        CheckThere();
    }
    else
    {
        m_camera->GetMemory().Write(buffer, address, length); // a command is done at once: its register stays 0
    }
    m_camera->OnWrite(address, buffer, length);
}

} // namespace Test
