// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/settings.h"

#include "genapi/exceptions.h"
#include "simulator/internal/actions.h"
#include "simulator/internal/compression.h"
#include "simulator/internal/faultregisters.h"
#include "simulator/internal/framecomposer.h"
#include "simulator/internal/limits.h"
#include "simulator/registers.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace Simulator::Internal
{

namespace
{

constexpr double DefaultExposureUs = 5000.0;
constexpr double DefaultRatioPercent = 50.0;
constexpr double MicrosecondsPerSecond = 1.0e6;
constexpr double NanosecondsPerSecond = 1.0e9;

std::uint64_t ToInteger(const std::uint8_t* data, std::int64_t bytes)
{
    std::uint64_t value = 0;
    for (std::int64_t i = 0; i < bytes; ++i)
    {
        value = value << 8U | data[i];
    }
    return value;
}

std::vector<std::uint8_t> FromInteger(std::uint64_t value, std::int64_t bytes)
{
    std::vector<std::uint8_t> data(static_cast<std::size_t>(bytes));
    for (auto byte = data.rbegin(); byte != data.rend(); ++byte)
    {
        *byte = static_cast<std::uint8_t>(value & 0xFFU);
        value >>= 8U;
    }
    return data;
}

double ToFloat(const std::uint8_t* data)
{
    const std::uint64_t bits = ToInteger(data, 8);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::uint64_t FloatBits(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/** What a selector can be set to, by name. */
std::vector<std::pair<std::string, std::int64_t>> ValuesOf(const SFeature& selector)
{
    auto values = selector.entries;
    if (selector.kind == EKind::Integer)
    {
        for (auto value = static_cast<std::int64_t>(selector.min); value <= static_cast<std::int64_t>(selector.max);
             ++value)
        {
            values.emplace_back(std::to_string(value), value);
        }
    }
    return values;
}

} // namespace

CSettings::CSettings(const SCameraConfig& config, std::shared_ptr<SFlash> flash)
    : m_config(config), m_flash(std::move(flash)), m_features(MakeFeatures(config)),
      m_referenceExposureUs(
          std::clamp(0.5 * MicrosecondsPerSecond / config.frameRate, Limits::MinExposureUs, DefaultExposureUs))
{
    SetFactoryValues();
    for (const SFeature& feature : m_features)
    {
        if (feature.isInUserSet)
        {
            const std::int64_t length = feature.bytes * feature.banks;
            std::vector<std::uint8_t> bytes(static_cast<std::size_t>(length));
            m_memory.Get(bytes.data(), feature.address, length);
            m_factory[feature.address] = std::move(bytes);
        }
    }
    ApplyConfiguredFeatures();
    std::uint32_t start = 0;
    {
        const std::lock_guard<std::mutex> lock(m_flash->mutex);
        start = m_flash->defaultUserSet;
        if (m_flash->hasUserDefinedName)
        {
            m_memory.SetText(Register::DeviceUserID, m_flash->userDefinedName);
        }
    }
    if (start != 0)
    {
        LoadUserSet(start);
    }
    m_memory.SetInteger(Register::UserSetDefault, start);
}

void CSettings::SetFactoryValues()
{
    m_memory.SetText(Register::DeviceVendorName, m_config.vendorName);
    m_memory.SetText(Register::DeviceModelName, m_config.modelName);
    m_memory.SetText(Register::DeviceManufacturerInfo, "Simulated camera");
    m_memory.SetText(Register::DeviceVersion, m_config.deviceVersion);
    m_memory.SetText(Register::DeviceFirmwareVersion, m_config.firmwareVersion);
    m_memory.SetText(Register::DeviceSerialNumber, m_config.serialNumber);
    m_memory.SetText(Register::DeviceUserID, m_config.userDefinedName);
    m_memory.SetInteger(Register::DeviceSFNCVersionMajor, 2);
    m_memory.SetInteger(Register::DeviceSFNCVersionMinor, 5);
    m_memory.SetFloat(Register::DeviceTemperature, 42.5);
    m_memory.SetInteger(Register::TimestampIncrement, 1, 8);
    for (const std::int64_t address : {Register::SensorWidth, Register::WidthMax, Register::Width})
    {
        m_memory.SetInteger(address, m_config.sensorWidth);
    }
    for (const std::int64_t address : {Register::SensorHeight, Register::HeightMax, Register::Height})
    {
        m_memory.SetInteger(address, m_config.sensorHeight);
    }
    m_memory.SetInteger(Register::PixelFormat, FindPixelFormat(std::string_view(m_config.pixelFormats.front()))->pfnc);
    m_memory.SetInteger(Register::AcquisitionMode, 2);
    m_memory.SetInteger(Register::AcquisitionFrameCount, 1);
    m_memory.SetInteger(Register::AcquisitionFrameRateEnable, 1);
    m_memory.SetFloat(Register::AcquisitionFrameRate, std::min(m_config.frameRate, MaxFrameRate()));
    m_memory.SetFloat(Register::ExposureTime, m_referenceExposureUs);
    SetFaults(m_memory, m_config.faults);
    m_memory.SetInteger(Register::ActionSelector, FirstActionSignal);
    m_memory.SetInteger(Register::PtpStatus, PtpDisabled);
    m_memory.SetFloat(Register::ImageCompressionRatio, DefaultRatioPercent);
    UpdateDerived();
}

void CSettings::ApplyConfiguredFeatures()
{
    // Widths first would fail on offsets that are not there yet: offsets start at 0, so any order of sizes before
    // offsets is right, which is the order of the feature table.
    std::map<std::string, std::string> left = m_config.features;
    const auto apply = [&](const SFeature& feature, std::int64_t address, const std::string& name)
    {
        const auto found = m_config.features.find(name);
        if (found != m_config.features.end())
        {
            const std::vector<std::uint8_t> data = Encode(feature, found->second);
            Write(feature, address, data.data(), feature.bytes, false);
            left.erase(name);
        }
    };
    for (const SFeature& feature : m_features)
    {
        apply(feature, AddressOf(feature), feature.name);
        if (!feature.selector.empty())
        {
            for (const auto& [entry, value] : ValuesOf(*FindFeature(feature.selector)))
            {
                apply(feature, feature.address + feature.bytes * value, feature.name + "[" + entry + "]");
            }
        }
    }
    if (!left.empty())
    {
        const auto& [name, text] = *left.begin();
        GENICAM_THROW(InvalidArgumentException, "There is no feature '" + name + "' to set to '" + text + "'.");
    }
}

const SFeature* CSettings::FindFeature(const std::string& name) const
{
    const auto found =
        std::find_if(m_features.begin(), m_features.end(), [&](const SFeature& f) { return f.name == name; });
    return found == m_features.end() ? nullptr : &*found;
}

const SFeature* CSettings::FindFeatureAt(std::int64_t address) const
{
    const auto found = std::find_if(m_features.begin(), m_features.end(),
                                    [&](const SFeature& f)
                                    { return address >= f.address && address < f.address + f.bytes * f.banks; });
    return found == m_features.end() ? nullptr : &*found;
}

std::int64_t CSettings::AddressOf(const SFeature& feature) const
{
    return feature.selectorAddress == 0
               ? feature.address
               : feature.address +
                     feature.bytes * static_cast<std::int64_t>(m_memory.GetInteger(feature.selectorAddress));
}

void CSettings::Write(const SFeature& feature, std::int64_t address, const std::uint8_t* data, std::int64_t length,
                      bool isLocked)
{
    if (feature.access == EAccess::ReadOnly)
    {
        GENICAM_THROW(AccessException, "'" + feature.name + "' is read-only.");
    }
    if (feature.isLockedWhileGrabbing && isLocked)
    {
        GENICAM_THROW(AccessException, "'" + feature.name + "' is locked while the camera grabs.");
    }
    if (feature.kind == EKind::Text)
    {
        m_memory.SetText(feature.address, std::string(data, std::find(data, data + length, std::uint8_t{0})));
    }
    else if (feature.kind == EKind::Bytes)
    {
        m_memory.Set(data, address, length);
    }
    else
    {
        if (length != feature.bytes)
        {
            GENICAM_THROW(AccessException, "'" + feature.name + "' takes " + std::to_string(feature.bytes) +
                                               " bytes at once, not " + std::to_string(length) + ".");
        }
        CheckValue(feature, data);
        m_memory.Set(data, address, length);
    }
    UpdateDerived();
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    if (feature.address == Register::DeviceUserID)
    {
        m_flash->userDefinedName = m_memory.GetText(Register::DeviceUserID);
        m_flash->hasUserDefinedName = true;
    }
    else if (feature.address == Register::UserSetDefault)
    {
        m_flash->defaultUserSet = static_cast<std::uint32_t>(m_memory.GetInteger(Register::UserSetDefault));
    }
}

double CSettings::MaximumOf(const SFeature& feature) const
{
    const auto rest = [&](std::uint32_t total, std::int64_t used)
    {
        return double(total) - m_memory.GetInteger(used);
    };
    switch (feature.address)
    {
    case Register::Width:
        return rest(m_config.sensorWidth, Register::OffsetX);
    case Register::Height:
        return rest(m_config.sensorHeight, Register::OffsetY);
    case Register::OffsetX:
        return rest(m_config.sensorWidth, Register::Width);
    case Register::OffsetY:
        return rest(m_config.sensorHeight, Register::Height);
    case Register::AcquisitionFrameRate:
        return MaxFrameRate();
    default:
        return feature.max;
    }
}

void CSettings::CheckValue(const SFeature& feature, const std::uint8_t* data) const
{
    const auto refuse = [&](const std::string& value)
    {
        GENICAM_THROW(OutOfRangeException, "'" + feature.name + "' cannot be " + value + ": it must be " +
                                               std::to_string(feature.min) + " to " +
                                               std::to_string(MaximumOf(feature)) + ".");
    };
    const std::uint64_t integer = ToInteger(data, feature.bytes);
    switch (feature.kind)
    {
    case EKind::Integer:
        if (double(integer) < feature.min || double(integer) > MaximumOf(feature) ||
            (integer - static_cast<std::uint64_t>(feature.min)) % static_cast<std::uint64_t>(feature.inc) != 0)
        {
            refuse(std::to_string(integer));
        }
        break;
    case EKind::Float:
        // Written so that a not-a-number is refused.
        if (!(ToFloat(data) >= feature.min && ToFloat(data) <= MaximumOf(feature)))
        {
            refuse(std::to_string(ToFloat(data)));
        }
        break;
    case EKind::Enumeration:
        if (std::none_of(feature.entries.begin(), feature.entries.end(),
                         [&](const auto& entry) { return static_cast<std::uint64_t>(entry.second) == integer; }))
        {
            GENICAM_THROW(InvalidArgumentException,
                          "'" + feature.name + "' has no entry of value " + std::to_string(integer) + ".");
        }
        break;
    case EKind::Boolean:
    case EKind::Command:
        if (integer > 1)
        {
            refuse(std::to_string(integer));
        }
        break;
    case EKind::Text:
    case EKind::Bytes:
        break;
    }
}

std::vector<std::uint8_t> CSettings::Encode(const SFeature& feature, const std::string& text) const
{
    const auto refuse = [&]
    {
        GENICAM_THROW(InvalidArgumentException, "'" + feature.name + "' cannot be '" + text + "'.");
    };
    try
    {
        std::size_t used = 0;
        std::uint64_t value = 0;
        switch (feature.kind)
        {
        case EKind::Text:
        {
            std::vector<std::uint8_t> data(text.begin(), text.end());
            data.resize(static_cast<std::size_t>(Register::TextBytes));
            return data;
        }
        case EKind::Bytes:
            refuse();
            break;
        case EKind::Enumeration:
        {
            const auto entry = std::find_if(feature.entries.begin(), feature.entries.end(),
                                            [&](const auto& e) { return e.first == text; });
            if (entry == feature.entries.end())
            {
                refuse();
            }
            return FromInteger(static_cast<std::uint64_t>(entry->second), feature.bytes);
        }
        case EKind::Boolean:
            if (text != "true" && text != "false")
            {
                refuse();
            }
            return FromInteger(text == "true" ? 1 : 0, feature.bytes);
        case EKind::Float:
            value = FloatBits(std::stod(text, &used));
            break;
        case EKind::Integer:
        case EKind::Command:
            value = static_cast<std::uint64_t>(std::stoll(text, &used));
            break;
        }
        if (used != text.size() || (feature.bytes == 4 && value > 0xFFFFFFFFU))
        {
            refuse();
        }
        return FromInteger(value, feature.bytes);
    }
    catch (const std::logic_error&) // what std::stod and std::stoll throw
    {
        refuse();
    }
    return {};
}

std::string CSettings::Decode(const SFeature& feature) const
{
    if (feature.kind == EKind::Text)
    {
        return m_memory.GetText(feature.address);
    }
    if (feature.kind == EKind::Bytes)
    {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(feature.bytes));
        m_memory.Get(bytes.data(), feature.address, feature.bytes);
        if (!feature.lengthFeature.empty())
        {
            bytes.resize(static_cast<std::size_t>(std::stoull(Decode(*FindFeature(feature.lengthFeature)))));
        }
        return {bytes.begin(), bytes.end()};
    }
    if (feature.kind == EKind::Float)
    {
        return std::to_string(m_memory.GetFloat(AddressOf(feature)));
    }
    const std::uint64_t value = m_memory.GetInteger(AddressOf(feature), feature.bytes);
    if (feature.kind == EKind::Boolean)
    {
        return value != 0 ? "true" : "false";
    }
    for (const auto& [name, number] : feature.entries)
    {
        if (static_cast<std::uint64_t>(number) == value)
        {
            return name;
        }
    }
    return feature.isSigned ? std::to_string(static_cast<std::int64_t>(value)) : std::to_string(value);
}

void CSettings::SaveUserSet()
{
    const auto set = static_cast<std::uint32_t>(m_memory.GetInteger(Register::UserSetSelector));
    if (set == 0)
    {
        GENICAM_THROW(AccessException, "The default user set cannot be overwritten.");
    }
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    SFlash::Settings& saved = m_flash->userSets[set];
    for (const auto& [address, factory] : m_factory)
    {
        std::vector<std::uint8_t>& bytes = saved[address];
        bytes.resize(factory.size());
        m_memory.Get(bytes.data(), address, static_cast<std::int64_t>(bytes.size()));
    }
}

void CSettings::LoadUserSet(std::uint32_t set)
{
    const std::lock_guard<std::mutex> lock(m_flash->mutex);
    const auto saved = m_flash->userSets.find(set);
    // A set never saved holds the factory's values, as on a new camera.
    const SFlash::Settings& source = saved == m_flash->userSets.end() ? m_factory : saved->second;
    for (const auto& [address, bytes] : source)
    {
        m_memory.Set(bytes.data(), address, static_cast<std::int64_t>(bytes.size()));
    }
    UpdateDerived();
}

bool CSettings::AdjustExposure()
{
    constexpr std::uint64_t Off = 0;
    constexpr std::uint64_t Once = 1;
    const std::uint64_t mode = m_memory.GetInteger(Register::ExposureAuto);
    if (mode == Off)
    {
        return false;
    }
    if (mode == Once)
    {
        m_memory.SetInteger(Register::ExposureAuto, Off);
    }
    const double gain = std::pow(10.0, m_memory.GetFloat(Register::Gain) / 20.0);
    const double wanted = std::max(m_referenceExposureUs / gain, Limits::MinExposureUs);
    if (wanted == m_memory.GetFloat(Register::ExposureTime))
    {
        return false;
    }
    m_memory.SetFloat(Register::ExposureTime, wanted);
    UpdateDerived();
    return true;
}

double CSettings::GetAmplification() const
{
    const double gain = std::pow(10.0, m_memory.GetFloat(Register::Gain) / 20.0);
    return gain * m_memory.GetFloat(Register::ExposureTime) / m_referenceExposureUs;
}

const SPixelFormat& CSettings::GetFormat() const
{
    return *FindPixelFormat(static_cast<std::uint32_t>(m_memory.GetInteger(Register::PixelFormat)));
}

std::uint32_t CSettings::GetWidth() const
{
    return static_cast<std::uint32_t>(m_memory.GetInteger(Register::Width));
}

std::uint32_t CSettings::GetHeight() const
{
    return static_cast<std::uint32_t>(m_memory.GetInteger(Register::Height));
}

std::uint64_t CSettings::GetImageBytes() const
{
    return std::uint64_t{GetWidth()} * GetHeight() * GetFormat().bytesPerPixel;
}

std::uint64_t CSettings::GetPayloadBytes() const
{
    const auto compression = GetCompression(*this);
    return (compression ? GetCompressedBytes(*compression) : GetImageBytes()) + CFrameComposer::GetTailBytes(*this);
}

bool CSettings::IsCompressing() const
{
    return m_memory.GetInteger(Register::ImageCompressionMode) != 0;
}

bool CSettings::IsChunkModeActive() const
{
    return m_memory.GetInteger(Register::ChunkModeActive) != 0;
}

bool CSettings::IsChunkEnabled(EChunk chunk) const
{
    return m_memory.GetInteger(Register::ChunkEnable + 4 * static_cast<std::int64_t>(chunk)) != 0;
}

double CSettings::MaxFrameRate() const
{
    return std::min(Limits::MaxFrameRate, m_config.maxBytesPerSecond / static_cast<double>(GetPayloadBytes()));
}

std::int64_t CSettings::GetPeriodNs() const
{
    return static_cast<std::int64_t>(NanosecondsPerSecond / m_memory.GetFloat(Register::AcquisitionResultingFrameRate));
}

void CSettings::UpdateDerived()
{
    // The image's chunk stays on whatever is written: there are applications that switch off all chunks to begin with.
    m_memory.SetInteger(Register::ChunkEnable, 1);
    m_memory.SetInteger(Register::PayloadSize, GetPayloadBytes());
    RefreshCompressionRegisters(*this);
    const double maxRate = MaxFrameRate();
    m_memory.SetFloat(Register::AcquisitionFrameRateMax, maxRate);
    // A rate that the new size does not allow is lowered, as cameras do.
    const double rate = std::min(m_memory.GetFloat(Register::AcquisitionFrameRate), maxRate);
    m_memory.SetFloat(Register::AcquisitionFrameRate, rate);
    const double wanted = m_memory.GetInteger(Register::AcquisitionFrameRateEnable) != 0 ? rate : maxRate;
    const double exposure = m_memory.GetFloat(Register::ExposureTime);
    const double byExposure = exposure > 0.0 ? MicrosecondsPerSecond / exposure : maxRate;
    m_memory.SetFloat(Register::AcquisitionResultingFrameRate, std::min(wanted, byExposure));
}

} // namespace Simulator::Internal
