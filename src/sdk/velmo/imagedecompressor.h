// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "velmo/grabresult.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Velmo
{

/** Byte order of a payload's chunk trailer. */
enum EEndianness
{
    Endianness_Little = 0, // USB3 Vision
    Endianness_Big = 1,    // GigE Vision
    Endianness_Auto = 2    // whichever the payload fits
};
enum ECompressionStatus
{
    CompressionStatus_Ok = 0,
    CompressionStatus_BufferOverflow,  // the camera could not make the image as small as it was told to
    CompressionStatus_Error,           // anything that none of the others says
    CompressionStatus_NotCompressed,   // the payload holds no compressed image
    CompressionStatus_Truncated,       // bytes are missing at its end
    CompressionStatus_Corrupt,         // a checksum or a field is wrong
    CompressionStatus_Unsupported,     // of a format version or codec that this SDK does not know
    CompressionStatus_WrongDescriptor, // made under another descriptor than the decompressor's
    CompressionStatus_TargetTooSmall,  // the caller's memory does not hold the image
    CompressionStatus_NoSuchStrip      // strips were asked for that the image does not have
};
enum ECompressionMode : int
{
    CompressionMode_Off = 0,
    CompressionMode_Lossless = 1,
    CompressionMode_FixedRatio = 2
};

/** What a grab result tells of its compression. Sizes are those of the decoded image; 0 where it is unknown. */
struct SCompressionInfo
{
    bool hasCompressedImage = false; // one that can be decoded; false whenever the status is not OK
    ECompressionStatus compressionStatus = CompressionStatus_Ok;
    bool lossy = false;
    std::uint32_t pixelType = 0; // PFNC value
    std::uint32_t width = 0;     // pixels
    std::uint32_t height = 0;    // pixels
    std::size_t decompressedImageBytes = 0;
    std::size_t decompressedPayloadBytes = 0; // the payload with the decoded image in place of the compressed one
    std::size_t compressedImageBytes = 0;
    std::uint32_t maxError = 0; // largest difference of a sample from what the camera saw; 0: exact
    std::uint32_t strips = 0;   // parts of the image that can be decoded each for itself
};

/**
 * Decodes the images of one camera, built from the descriptor that the camera reports before it grabs.
 *
 * The format is docs/protocols/compressedimage.md. Threads: any, also one object on many threads at a time; it never
 * changes. Decoding reuses memory that each thread keeps for itself. Whatever a payload holds, decoding answers with a
 * status: it never throws and never writes outside the caller's memory.
 */
class VELMO_EXPORT CImageDecompressor
{
public:
    /** The bytes are copied. Throws InvalidArgumentException, which says what is wrong with them and where. */
    CImageDecompressor(const void* pDescriptor, std::size_t bytes);
    ~CImageDecompressor();
    CImageDecompressor(const CImageDecompressor&) = delete;
    CImageDecompressor& operator=(const CImageDecompressor&) = delete;

    /** As the static functions of the same names, of the descriptor that this decompressor was built from. */
    ECompressionMode GetCompressionMode() const;
    void GetCompressionDescriptor(void* pBuffer, std::size_t* pBytes) const;
    void GetCompressionDescriptorHash(void* pBuffer, std::size_t* pBytes) const;
    std::size_t GetImageSizeForDecompression() const;
    std::uint32_t GetPixelType() const;
    std::uint32_t GetWidth() const;
    std::uint32_t GetHeight() const;
    std::uint32_t GetNumStrips() const;

    /**
     * @name Queries of a camera, by its node map
     *
     * Read the features ImageCompressionMode, ImageCompressionDescriptor, ImageCompressionDescriptorHash and
     * ImageCompressionDecodedSize. Throw LogicalErrorException when the camera does not have the feature,
     * AccessException when it cannot be read now, and what the camera's port throws. The feature is read past the
     * caches: what the camera reports is what counts.
     * @{
     */
    /** A value that is none of the enumeration is passed on as it is, or as the nearest that an int can have. */
    static ECompressionMode GetCompressionMode(GenApi::INodeMap& cameraNodeMap);
    /**
     * Copies the descriptor to pBuffer, which holds *pBytes, and sets *pBytes to its size. With pBuffer null only the
     * size is told; it is 0 while the camera does not compress. Throws OutOfRangeException when the buffer is too
     * small (*pBytes is then the size needed), InvalidArgumentException when pBytes is null.
     */
    static void GetCompressionDescriptor(void* pBuffer, std::size_t* pBytes, GenApi::INodeMap& cameraNodeMap);
    /** The same for the 16 bytes by which the camera's images name their descriptor. */
    static void GetCompressionDescriptorHash(void* pBuffer, std::size_t* pBytes, GenApi::INodeMap& cameraNodeMap);
    /** Bytes of an image of the present settings, decoded. */
    static std::size_t GetImageSizeForDecompression(GenApi::INodeMap& cameraNodeMap);
    /** @} */

    /**
     * False when the result carries no compression information; info is then left alone. True with a status other than
     * OK when it should hold a compressed image but does not hold a good one. Checks the head of the compressed image
     * only, allocates nothing and takes no lock.
     */
    static bool GetCompressionInfo(SCompressionInfo& info, const CGrabResultPtr& result,
                                   EEndianness endianness = Endianness_Auto);

    /** The same of a payload that is known to be chunk data, or that is a bare compressed image. */
    static bool GetCompressionInfo(SCompressionInfo& info, const void* pPayload, std::size_t payloadBytes,
                                   EEndianness endianness = Endianness_Auto);

    static constexpr std::uint32_t AllStrips = 0xFFFFFFFF;

    /**
     * Decodes into the caller's memory, GetImageSizeForDecompression() bytes, lines without padding. With firstStrip
     * and strips only these lines are written, each at its place in the whole image: several threads decode one image
     * when each takes some of its GetNumStrips() strips. A status other than OK leaves the lines asked for undefined.
     */
    ECompressionStatus Decompress(void* pImage, std::size_t imageBytes, const CGrabResultPtr& result,
                                  std::uint32_t firstStrip = 0, std::uint32_t strips = AllStrips,
                                  EEndianness endianness = Endianness_Auto) const noexcept;
    /** The same of a payload that is chunk data or a bare compressed image. */
    ECompressionStatus Decompress(void* pImage, std::size_t imageBytes, const void* pPayload, std::size_t payloadBytes,
                                  std::uint32_t firstStrip = 0, std::uint32_t strips = AllStrips,
                                  EEndianness endianness = Endianness_Auto) const noexcept;

private:
    struct SPrivate;
    const std::unique_ptr<const SPrivate> m_p;
};

} // namespace Velmo
