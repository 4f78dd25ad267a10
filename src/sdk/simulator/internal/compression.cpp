// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/compression.h"

#include "simulator/registers.h"

namespace Simulator::Internal
{

namespace
{

namespace Codec = Velmo::Codec;

constexpr auto Category = "ImageFormatControl";
constexpr double MinRatioPercent = 5.0;
constexpr double MaxRatioPercent = 100.0;
const std::vector<std::string> Shaping = {
    "Width", "Height", "PixelFormat", "ImageCompressionMode", "ImageCompressionRatio", "UserSetLoad"};

SFeature MakeFeature(const char* name, EKind kind, std::int64_t address, const char* toolTip)
{
    SFeature feature;
    feature.category = Category;
    feature.name = name;
    feature.kind = kind;
    feature.address = address;
    feature.bytes = kind == EKind::Float ? 8 : 4;
    feature.toolTip = toolTip;
    feature.visibility = "Expert";
    return feature;
}

SFeature MakeSetting(const char* name, EKind kind, std::int64_t address, const char* toolTip)
{
    SFeature feature = MakeFeature(name, kind, address, toolTip);
    feature.isInUserSet = true;
    feature.isLockedWhileGrabbing = true;
    feature.invalidators = {"UserSetLoad"};
    return feature;
}

SFeature MakeReport(const char* name, EKind kind, std::int64_t address, const char* toolTip)
{
    SFeature feature = MakeFeature(name, kind, address, toolTip);
    feature.access = EAccess::ReadOnly;
    feature.max = 4294967295.0;
    feature.invalidators = Shaping;
    feature.visibility = "Guru";
    return feature;
}

} // namespace

void AddCompressionControl(std::vector<SFeature>& features)
{
    SFeature mode = MakeSetting("ImageCompressionMode", EKind::Enumeration, Register::ImageCompressionMode,
                                "Whether images are compressed, and how.");
    mode.entries = {{"Off", 0},
                    {"Lossless", static_cast<std::int64_t>(Codec::EMode::Lossless)},
                    {"FixedRatio", static_cast<std::int64_t>(Codec::EMode::FixedRatio)}};
    features.push_back(mode);
    SFeature ratio = MakeSetting("ImageCompressionRatio", EKind::Float, Register::ImageCompressionRatio,
                                 "Largest size of an image compressed with a fixed ratio, of its size otherwise.");
    ratio.isCustom = true;
    ratio.min = MinRatioPercent;
    ratio.max = MaxRatioPercent;
    ratio.unit = "%";
    features.push_back(ratio);
    const auto report = [&](const char* name, EKind kind, std::int64_t address, const char* toolTip) -> SFeature&
    {
        features.push_back(MakeReport(name, kind, address, toolTip));
        features.back().isCustom = true;
        return features.back();
    };
    report("ImageCompressionDecodedSize", EKind::Integer, Register::ImageCompressionDecodedSize,
           "Bytes of an image when it is decompressed.")
        .unit = "B";
    report("ImageCompressionDescriptorLength", EKind::Integer, Register::ImageCompressionDescriptorLength,
           "Bytes of the descriptor; 0 when images are not compressed.")
        .unit = "B";
    report("ImageCompressionDescriptorHashLength", EKind::Integer, Register::ImageCompressionDescriptorHashLength,
           "Bytes of the descriptor's hash; 0 when images are not compressed.")
        .unit = "B";
    SFeature& descriptor = report("ImageCompressionDescriptor", EKind::Bytes, Register::ImageCompressionDescriptor,
                                  "What a decompressor is built from.");
    descriptor.bytes = Codec::DescriptorBytes;
    descriptor.lengthFeature = "ImageCompressionDescriptorLength";
    SFeature& hash = report("ImageCompressionDescriptorHash", EKind::Bytes, Register::ImageCompressionDescriptorHash,
                            "By which images name their descriptor.");
    hash.bytes = Codec::DescriptorHashBytes;
    hash.lengthFeature = "ImageCompressionDescriptorHashLength";
}

std::optional<Codec::SDescriptor> GetCompression(const CSettings& settings)
{
    const CRegisterMemory& memory = settings.GetMemory();
    const std::uint64_t mode = memory.GetInteger(Register::ImageCompressionMode);
    if (mode == 0)
    {
        return std::nullopt;
    }
    return Codec::MakeDescriptor(static_cast<Codec::EMode>(mode), settings.GetFormat().pfnc, settings.GetWidth(),
                                 settings.GetHeight(), memory.GetFloat(Register::ImageCompressionRatio));
}

std::uint64_t GetCompressedBytes(const Codec::SDescriptor& descriptor)
{
    return Velmo::Chunks::AlignedBytes(Codec::MaxFrameBytes(descriptor));
}

void RefreshCompressionRegisters(CSettings& settings)
{
    CRegisterMemory& memory = settings.GetMemory();
    std::vector<std::uint8_t> bytes;
    Codec::DescriptorHash hash{};
    if (const auto descriptor = GetCompression(settings))
    {
        bytes = Codec::EncodeDescriptor(*descriptor);
        hash = Codec::HashDescriptor(bytes.data(), bytes.size());
    }
    memory.SetInteger(Register::ImageCompressionDecodedSize, settings.GetImageBytes());
    memory.SetInteger(Register::ImageCompressionDescriptorLength, bytes.size());
    memory.SetInteger(Register::ImageCompressionDescriptorHashLength, bytes.empty() ? 0 : hash.size());
    bytes.resize(Codec::DescriptorBytes);
    memory.Set(bytes.data(), Register::ImageCompressionDescriptor, Codec::DescriptorBytes);
    memory.Set(hash.data(), Register::ImageCompressionDescriptorHash, Codec::DescriptorHashBytes);
}

SImagePart CImageCompressor::Compress(const Codec::SDescriptor& descriptor, const std::uint8_t* pImage)
{
    std::vector<std::uint8_t> wanted = Codec::EncodeDescriptor(descriptor);
    if (m_encoder == nullptr || wanted != m_descriptor)
    {
        m_encoder.reset();
        m_encoder = std::make_unique<Codec::CEncoder>(descriptor);
        m_descriptor = std::move(wanted);
    }
    const Codec::SEncodedFrame frame = m_encoder->Encode(pImage);
    m_aligned.assign(frame.pData, frame.pData + frame.bytes);
    m_aligned.resize(Velmo::Chunks::AlignedBytes(frame.bytes));
    return {m_aligned.data(), m_aligned.size(), Velmo::Chunks::CompressedImageChunkId};
}

void CImageCompressor::Reset()
{
    m_encoder.reset();
    m_descriptor.clear();
    m_aligned.clear();
    m_aligned.shrink_to_fit();
}

} // namespace Simulator::Internal
