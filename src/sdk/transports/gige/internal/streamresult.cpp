// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/streamresult.h"

namespace Velmo::GigE::Internal
{

namespace
{

EPayloadType PayloadTypeOf(ArvBuffer* pBuffer)
{
    // The engine reports the extended chunk flag (0x4000) of an image apart from the payload type, of complete ones.
    if (arv_buffer_has_chunks(pBuffer))
    {
        return EPayloadType::ChunkData;
    }
    switch (arv_buffer_get_payload_type(pBuffer))
    {
    case ARV_BUFFER_PAYLOAD_TYPE_IMAGE:
        return EPayloadType::Image;
    case ARV_BUFFER_PAYLOAD_TYPE_RAWDATA:
        return EPayloadType::RawData;
    case ARV_BUFFER_PAYLOAD_TYPE_FILE:
        return EPayloadType::File;
    case ARV_BUFFER_PAYLOAD_TYPE_CHUNK_DATA:
    case ARV_BUFFER_PAYLOAD_TYPE_EXTENDED_CHUNK_DATA:
        return EPayloadType::ChunkData;
    default:
        return EPayloadType::Undefined;
    }
}

void FillGeometry(ArvBuffer* pBuffer, Transport::SStreamResult& result)
{
    gint x = 0;
    gint y = 0;
    gint width = 0;
    gint height = 0;
    arv_buffer_get_image_region(pBuffer, &x, &y, &width, &height);
    gint paddingX = 0;
    gint paddingY = 0;
    arv_buffer_get_image_padding(pBuffer, &paddingX, &paddingY);
    result.pixelType = arv_buffer_get_image_pixel_format(pBuffer);
    result.width = static_cast<std::uint32_t>(width);
    result.height = static_cast<std::uint32_t>(height);
    result.offsetX = static_cast<std::uint32_t>(x);
    result.offsetY = static_cast<std::uint32_t>(y);
    result.paddingX = static_cast<std::uint32_t>(paddingX);
}

} // namespace

const char* FailureText(ArvBufferStatus status)
{
    switch (status)
    {
    case ARV_BUFFER_STATUS_TIMEOUT:
        return "The image is incomplete: packets did not arrive in time.";
    case ARV_BUFFER_STATUS_MISSING_PACKETS:
        return "The image is incomplete: packets are missing and were not sent again.";
    case ARV_BUFFER_STATUS_WRONG_PACKET_ID:
        return "The image is incomplete: a packet had an identifier that cannot belong to it.";
    case ARV_BUFFER_STATUS_SIZE_MISMATCH:
        return "The image does not fit the buffer: the camera's payload size was changed.";
    case ARV_BUFFER_STATUS_ABORTED:
        return "The transfer of the image was aborted.";
    case ARV_BUFFER_STATUS_CLEARED: // given back unfilled
        return "The image is of a kind that cannot be received.";
    case ARV_BUFFER_STATUS_FILLING:
        return "The transfer of the image was not finished.";
    default:
        return "The image was not received for a reason that is not known.";
    }
}

std::size_t ImageBytes(const Transport::SStreamResult& result)
{
    const std::size_t bitsPerPixel = result.pixelType >> 16 & 0xFF; // PFNC: bits 16..23
    return (std::size_t{result.width} * result.height * bitsPerPixel + 7) / 8 +
           std::size_t{result.height} * result.paddingX;
}

Transport::SStreamResult MakeStreamResult(ArvBuffer* pBuffer, std::size_t announcedBytes)
{
    Transport::SStreamResult result;
    result.pContext = const_cast<void*>(arv_buffer_get_user_data(pBuffer));
    result.blockId = arv_buffer_get_frame_id(pBuffer);
    result.timestamp = arv_buffer_get_timestamp(pBuffer);
    const ArvBufferStatus status = arv_buffer_get_status(pBuffer);
    const ArvBufferPayloadType payloadType = arv_buffer_get_payload_type(pBuffer);
    result.payloadType = PayloadTypeOf(pBuffer);
    // The engine answers geometry of these kinds only, and has none of an incomplete image.
    const bool hasGeometry =
        status == ARV_BUFFER_STATUS_SUCCESS && arv_buffer_get_n_parts(pBuffer) > 0 &&
        (result.payloadType == EPayloadType::Image || result.payloadType == EPayloadType::ChunkData);
    if (hasGeometry && payloadType != ARV_BUFFER_PAYLOAD_TYPE_CHUNK_DATA)
    {
        FillGeometry(pBuffer, result);
    }
    arv_buffer_get_data(pBuffer, &result.payloadBytes);
    // The engine calls an image complete that it cut to the buffer. The image of a payload with chunks may be
    // compressed, and smaller for that.
    const bool mayBeSmall = result.payloadType == EPayloadType::ChunkData && result.payloadBytes < announcedBytes;
    const bool isCut = status == ARV_BUFFER_STATUS_SUCCESS && !mayBeSmall && result.payloadBytes < ImageBytes(result);
    if (status == ARV_BUFFER_STATUS_SUCCESS && !isCut)
    {
        result.status = Transport::EResultStatus::Ok;
        return result;
    }
    result.status = Transport::EResultStatus::Failed;
    if (isCut)
    {
        result.errorCode = static_cast<std::uint32_t>(ARV_BUFFER_STATUS_SIZE_MISMATCH);
        result.errorDescription = FailureText(ARV_BUFFER_STATUS_SIZE_MISMATCH);
        return result;
    }
    result.errorCode = static_cast<std::uint32_t>(status);
    result.errorDescription = FailureText(status);
    return result;
}

Transport::SStreamResult MakeCanceledResult(void* pContext)
{
    Transport::SStreamResult result;
    result.pContext = pContext;
    result.status = Transport::EResultStatus::Canceled;
    return result;
}

} // namespace Velmo::GigE::Internal
