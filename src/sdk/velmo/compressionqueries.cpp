// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/imagedecompressor.h"
#include "velmo/internal/copybytes.h"

#include <algorithm>
#include <limits>
#include <mutex>

namespace Velmo
{

namespace
{

constexpr auto ModeFeature = "ImageCompressionMode";
constexpr auto DescriptorFeature = "ImageCompressionDescriptor";
constexpr auto HashFeature = "ImageCompressionDescriptorHash";
constexpr auto SizeFeature = "ImageCompressionDecodedSize";

template <class Node> Node& Find(GenApi::INodeMap& nodeMap, const char* name)
{
    GenApi::INode* const pNode = nodeMap.GetNode(name);
    auto* const pTyped = dynamic_cast<Node*>(pNode);
    if (pTyped == nullptr || !GenApi::IsImplemented(pNode))
    {
        GENICAM_THROW(LogicalErrorException, "The camera '" + nodeMap.GetDeviceName().str() +
                                                 "' does not compress images: it has no feature '" + name + "'" +
                                                 (pNode != nullptr && pTyped == nullptr ? " of the right kind." : "."));
    }
    return *pTyped;
}

void ReadRegister(GenApi::INodeMap& nodeMap, const char* name, const char* what, void* pBuffer, std::size_t* pBytes)
{
    // Length and bytes must be of the same settings.
    const std::lock_guard<std::recursive_mutex> lock(nodeMap.GetLock());
    auto& reg = Find<GenApi::IRegister>(nodeMap, name);
    const std::int64_t length = reg.GetLength();
    if (Internal::CheckRoom(what, length < 0 ? 0 : static_cast<std::size_t>(length), pBuffer, pBytes))
    {
        reg.Get(static_cast<std::uint8_t*>(pBuffer), length, false, true);
    }
}

} // namespace

ECompressionMode CImageDecompressor::GetCompressionMode(GenApi::INodeMap& cameraNodeMap)
{
    const std::int64_t value = Find<GenApi::IEnumeration>(cameraNodeMap, ModeFeature).GetIntValue(false, true);
    // Not cut off to fewer bits: what is left of a large value could be that of another mode.
    constexpr std::int64_t Lowest = std::numeric_limits<int>::min();
    constexpr std::int64_t Highest = std::numeric_limits<int>::max();
    return static_cast<ECompressionMode>(std::clamp(value, Lowest, Highest));
}

void CImageDecompressor::GetCompressionDescriptor(void* pBuffer, std::size_t* pBytes, GenApi::INodeMap& cameraNodeMap)
{
    ReadRegister(cameraNodeMap, DescriptorFeature, "compression descriptor", pBuffer, pBytes);
}

void CImageDecompressor::GetCompressionDescriptorHash(void* pBuffer, std::size_t* pBytes,
                                                      GenApi::INodeMap& cameraNodeMap)
{
    ReadRegister(cameraNodeMap, HashFeature, "compression descriptor hash", pBuffer, pBytes);
}

std::size_t CImageDecompressor::GetImageSizeForDecompression(GenApi::INodeMap& cameraNodeMap)
{
    const std::int64_t bytes = Find<GenApi::IInteger>(cameraNodeMap, SizeFeature).GetValue(false, true);
    return bytes < 0 ? 0 : static_cast<std::size_t>(bytes);
}

} // namespace Velmo
