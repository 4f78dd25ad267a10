// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/encoder.h"

#include "codec/internal/framewriter.h"
#include "codec/pixellayout.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Velmo::Codec
{

namespace
{

constexpr int MaxTries = 7;               // of one image, before the largest error
constexpr double GoodUse = 0.93;          // of the bytes allowed: not worth another try
constexpr std::int64_t None = -1;         // below every error
constexpr std::uint32_t FloorImages = 64; // how long an error that was too small is not tried again

const SDescriptor& Checked(const SDescriptor& descriptor)
{
    if (descriptor.imageBytes == 0 ||
        descriptor.imageBytes != ImageBytes(descriptor.pixelType, descriptor.width, descriptor.height) ||
        descriptor.strips == 0 || descriptor.strips > std::min(descriptor.height, MaxStrips))
    {
        throw std::invalid_argument("no images can be coded under this descriptor");
    }
    return descriptor;
}

} // namespace

struct CEncoder::SPrivate
{
    explicit SPrivate(const SDescriptor& descriptor_)
        : descriptor(Checked(descriptor_)), writer(descriptor), largestError(LargestError(descriptor.pixelType)),
          samples(descriptor.imageBytes / FindPixelLayout(descriptor.pixelType)->wordBytes)
    {
    }

    std::int64_t Guess(std::int64_t error, std::uint64_t frameBytes) const;
    bool Search(const std::uint8_t* pImage);
    bool Try(const std::uint8_t* pImage, std::int64_t error);

    const SDescriptor descriptor;
    Internal::CFrameWriter writer;
    const std::int64_t largestError;
    const std::uint64_t samples;

    std::vector<std::uint8_t> frame; // the best so far
    std::vector<std::uint8_t> trial;
    Internal::CFrameWriter::SOutcome outcome; // of the last try
    std::uint64_t frameBytes = 0;
    std::int64_t tooSmall = None; // largest error known not to do
    std::int64_t enough = None;   // smallest error known to do; None: there is none yet
    std::int64_t next = 0;        // where the next image begins
    std::uint32_t floorAge = 0;   // images since tooSmall was found
    bool isFirst = true;
};

/** Each doubling of the step saves about one bit of every sample. */
std::int64_t CEncoder::SPrivate::Guess(std::int64_t error, std::uint64_t bytes) const
{
    const double excess = static_cast<double>(bytes) - static_cast<double>(writer.GetLimit()) * GoodUse;
    const double bits = std::clamp(excess * 8.0 / static_cast<double>(samples), -16.0, 16.0);
    return static_cast<std::int64_t>(std::llround((static_cast<double>(2 * error + 1) * std::exp2(bits) - 1.0) / 2.0));
}

bool CEncoder::SPrivate::Try(const std::uint8_t* pImage, std::int64_t error)
{
    outcome = writer.Write(pImage, static_cast<std::uint32_t>(error), trial);
    if (outcome.fits)
    {
        frame.swap(trial);
        frameBytes = outcome.frameBytes;
        enough = error;
    }
    else
    {
        tooSmall = std::max(tooSmall, error);
        floorAge = 0;
    }
    return outcome.fits;
}

bool CEncoder::SPrivate::Search(const std::uint8_t* pImage)
{
    enough = None;
    if (++floorAge > FloorImages)
    {
        tooSmall = None;
    }
    std::int64_t error = std::clamp(next, std::int64_t{0}, largestError);
    for (int tries = 0; tries < MaxTries; ++tries)
    {
        const bool fits = Try(pImage, error);
        const bool isGood = fits && static_cast<double>(frameBytes) >= static_cast<double>(writer.GetLimit()) * GoodUse;
        // Images of a stream are much alike: the next one may begin lower; this one is not coded again for that.
        const bool mayImprove = fits && !isGood && enough - 1 > tooSmall;
        const std::int64_t upper = enough == None ? largestError : enough - 1;
        error = std::clamp(Guess(error, outcome.frameBytes), std::min(tooSmall + 1, upper), upper);
        if (fits && (!mayImprove || !isFirst))
        {
            next = mayImprove ? error : enough;
            return true;
        }
        if (!fits && tooSmall == upper)
        {
            break;
        }
    }
    next = enough == None ? largestError : enough;
    return enough != None || (tooSmall < largestError && Try(pImage, largestError));
}

CEncoder::CEncoder(const SDescriptor& descriptor) : m_p(std::make_unique<SPrivate>(descriptor)) {}

CEncoder::~CEncoder() = default;

const SDescriptor& CEncoder::GetDescriptor() const
{
    return m_p->descriptor;
}

std::uint32_t CEncoder::LargestError(std::uint32_t pixelType)
{
    const SPixelLayout* const layout = FindPixelLayout(pixelType);
    return layout == nullptr ? 0 : (layout->maxSample + 1) / 8;
}

SEncodedFrame CEncoder::Encode(const void* pImage)
{
    const auto* const pBytes = static_cast<const std::uint8_t*>(pImage);
    const bool isSteered = m_p->descriptor.mode == EMode::FixedRatio;
    const bool fits = isSteered ? m_p->Search(pBytes) : m_p->Try(pBytes, 0);
    m_p->isFirst = false;
    if (!fits)
    {
        m_p->writer.WriteOverflow(m_p->frame);
        return {m_p->frame.data(), FrameHeaderBytes, 0, true};
    }
    return {m_p->frame.data(), m_p->frameBytes, static_cast<std::uint32_t>(m_p->enough), false};
}

} // namespace Velmo::Codec
