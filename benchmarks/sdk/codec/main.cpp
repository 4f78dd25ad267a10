// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/encoder.h"
#include "codec/internal/bytes.h"
#include "codec/internal/filterof.h"
#include "codec/internal/frameformat.h"
#include "codec/pixellayout.h"
#include "protocols/chunks.h"
#include "simulator/internal/testimage.h"
#include "support/figures.h"
#include "support/secondthread.h"
#include "velmo/imagedecompressor.h"

#include <zstd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace
{

using Benchmarks::CFigures;
using Benchmarks::costMicroseconds;
using Benchmarks::median;
using Velmo::CImageDecompressor;
namespace Codec = Velmo::Codec;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t Size = 2048;
constexpr int Runs = 40;

void require(bool holds, const char* what)
{
    if (!holds)
    {
        std::fprintf(stderr, "bench_codec: %s\n", what);
        std::exit(1);
    }
}

/** A camera-like image, its payload and all that decodes it. */
struct SSubject
{
    SSubject(const char* format, Codec::EMode mode, double percent)
        : name(std::string(format) + (mode == Codec::EMode::Lossless ? ", lossless" : ", fixed ratio")),
          pixelType(Simulator::FindPixelFormat(std::string_view(format))->pfnc),
          encoder(Codec::MakeDescriptor(mode, pixelType, Size, Size, percent))
    {
        Simulator::Internal::SImageKey key;
        key.pfnc = pixelType;
        key.width = key.height = key.sensorWidth = Size;
        key.pattern = 64; // NoisyScene
        const auto prepared = Simulator::Internal::CTestImage::Get(key);
        image.assign(prepared->GetFrame(0, 0), prepared->GetFrame(0, 0) + prepared->GetFrameBytes());
        const Codec::SEncodedFrame coded = encoder.Encode(image.data());
        frame.assign(coded.pData, coded.pData + coded.bytes);
        Velmo::Chunks::Append(payload, Velmo::Chunks::CompressedImageChunkId, frame.data(), frame.size(),
                              Velmo::Chunks::EByteOrder::Big);
        const Bytes descriptor = Codec::EncodeDescriptor(encoder.GetDescriptor());
        decompressor = std::make_unique<CImageDecompressor>(descriptor.data(), descriptor.size());
        decoded.resize(image.size());
        bare.resize(image.size());
        require(Codec::ParseFrameHeader(frame.data(), frame.size(), header) == Codec::EResult::Ok, "no good frame");
    }

    void decode(std::uint32_t first = 0, std::uint32_t strips = CImageDecompressor::AllStrips)
    {
        require(decompressor->Decompress(decoded.data(), decoded.size(), payload.data(), payload.size(), first,
                                         strips) == Velmo::CompressionStatus_Ok,
                "the image was not decoded");
    }

    std::string name;
    std::uint32_t pixelType;
    Codec::CEncoder encoder;
    Codec::SFrameHeader header;
    Bytes image;
    Bytes frame;
    Bytes payload;
    Bytes decoded;
    Bytes bare;
    std::unique_ptr<CImageDecompressor> decompressor;
};

/** zstd and the filter with nothing else: no payload, no header, no checks. */
class CBareCodec
{
public:
    explicit CBareCodec(SSubject& subject)
        : m_subject(subject),
          m_filter(Codec::Internal::FilterOf(*Codec::FindPixelLayout(subject.pixelType), subject.header.maxError)),
          m_context(ZSTD_createDCtx(), ZSTD_freeDCtx), m_filtered(subject.image.size())
    {
    }

    void decode()
    {
        const std::uint32_t strips = m_subject.header.strips;
        const std::size_t lineBytes = m_subject.image.size() / Size;
        const std::uint8_t* pEntry = m_subject.frame.data() + Codec::FrameHeaderBytes;
        const std::uint8_t* pCoded = pEntry + strips * Codec::StripEntryBytes;
        for (std::uint32_t i = 0; i < strips; ++i, pEntry += Codec::StripEntryBytes)
        {
            const std::size_t begin = Codec::FirstLine(i, strips, Size) * lineBytes;
            const std::size_t bytes = Codec::FirstLine(i + 1, strips, Size) * lineBytes - begin;
            const auto coded = Codec::Internal::Load<std::uint32_t>(pEntry);
            ZSTD_decompressDCtx(m_context.get(), m_filtered.data(), bytes, pCoded, coded);
            Codec::Internal::Unfilter(m_filter, m_filtered.data(), bytes, m_subject.bare.data() + begin);
            pCoded += coded;
        }
    }

private:
    SSubject& m_subject;
    const Codec::Internal::SFilter m_filter;
    std::unique_ptr<ZSTD_DCtx, decltype(&ZSTD_freeDCtx)> m_context;
    Bytes m_filtered;
};

/** A cost in microseconds as a rate: bytes per microsecond are MB per second. */
double rate(std::size_t bytes, double microseconds)
{
    return static_cast<double>(bytes) / microseconds;
}

void reportOneThread(CFigures& figures, SSubject& subject, bool hasGoal)
{
    CBareCodec bareCodec(subject);
    std::vector<double> ours;
    std::vector<double> bare;
    std::vector<double> copy;
    for (int run = 0; run < Runs; ++run)
    {
        ours.push_back(costMicroseconds([&] { subject.decode(); }));
        bare.push_back(costMicroseconds([&] { bareCodec.decode(); }));
        copy.push_back(
            costMicroseconds([&] { std::memcpy(subject.bare.data(), subject.image.data(), subject.image.size()); }));
        Benchmarks::keep(subject.bare[static_cast<std::size_t>(run)]);
    }
    bareCodec.decode();
    require(subject.bare == subject.decoded, "the bare codec decodes something else");
    require(subject.header.maxError != 0 || subject.decoded == subject.image, "the image is not what it was");
    const std::size_t bytes = subject.image.size();
    const double percent = 100.0 * static_cast<double>(subject.frame.size()) / static_cast<double>(bytes);
    CFigures::SRow row{"decoding " + subject.name + " (" + std::to_string(std::lround(percent)) + " %)",
                       rate(bytes, median(ours)), "MB/s", "bare codec", rate(bytes, median(bare))};
    row.goal = CFigures::EGoal::AtLeast;
    row.goalValue = 0.9;
    figures.add(row);
    if (hasGoal)
    {
        figures.add({"copying the decoded image", rate(bytes, median(copy)), "MB/s", "", 0});
        figures.add({"decoding " + subject.name, rate(bytes, median(ours)), "MB/s", "", 0, CFigures::EGoal::AtLeast,
                     900.0, false});
    }
}

/** Arithmetic that needs no memory, about as long as decoding half an image. */
void spin()
{
    std::uint32_t value = 1;
    for (int i = 0; i < 500'000; ++i)
    {
        value = value * 1664525U + 1013904223U;
    }
    Benchmarks::keep(value);
}

/** How much faster two halves on two threads are than one after the other: wall-clock, the best of the runs. */
double gainOfTwo(Benchmarks::CSecondThread& second, const std::function<void()>& firstHalf,
                 const std::function<void()>& secondHalf)
{
    double one = 1e12;
    double two = 1e12;
    for (int run = 0; run < Runs * 3; ++run)
    {
        double start = Benchmarks::nowMicroseconds();
        firstHalf();
        secondHalf();
        one = std::min(one, Benchmarks::nowMicroseconds() - start);
        start = Benchmarks::nowMicroseconds();
        second.start(secondHalf);
        firstHalf();
        second.wait();
        two = std::min(two, Benchmarks::nowMicroseconds() - start);
    }
    return one / two;
}

/** By processor time (what two free processors would give), and by the clock beside what this machine gives at all. */
void reportTwoThreads(CFigures& figures, SSubject& subject)
{
    Benchmarks::CSecondThread second;
    const std::uint32_t half = subject.header.strips / 2;
    std::vector<double> gains;
    for (int run = 0; run < Runs; ++run)
    {
        const double whole = costMicroseconds([&] { subject.decode(); });
        double other = 0;
        second.start([&] { other = costMicroseconds([&] { subject.decode(half); }); });
        const double mine = costMicroseconds([&] { subject.decode(0, half); });
        second.wait();
        gains.push_back(whole / std::max(mine, other));
    }
    require(subject.decoded == subject.image, "two threads decode something else");
    figures.add({"an image by two threads, processor time of the longer half", median(gains), "times faster", "", 0,
                 CFigures::EGoal::AtLeast, 1.8, false});
    const double gain = gainOfTwo(
        second, [&] { subject.decode(0, half); }, [&] { subject.decode(half); });
    figures.add({"the same by the clock", gain, "times faster", "bare arithmetic", gainOfTwo(second, spin, spin)});
}

void reportEncoding(CFigures& figures, SSubject& subject)
{
    std::vector<double> costs;
    for (int run = 0; run < Runs / 2; ++run)
    {
        costs.push_back(
            costMicroseconds([&] { Benchmarks::keep(subject.encoder.Encode(subject.image.data()).bytes); }));
    }
    figures.add({"encoding " + subject.name, rate(subject.image.size(), median(costs)), "MB/s", "", 0});
}

void reportInfo(CFigures& figures, const SSubject& subject)
{
    constexpr int Calls = 100'000;
    Velmo::SCompressionInfo info;
    const double compressed = costMicroseconds(
        [&]
        {
            for (int i = 0; i < Calls; ++i)
            {
                Benchmarks::keep(static_cast<std::size_t>(
                    CImageDecompressor::GetCompressionInfo(info, subject.payload.data(), subject.payload.size())));
            }
        });
    figures.add({"what a payload tells of its compression", compressed * 1000.0 / Calls, "ns", "", 0});
}

} // namespace

int main()
{
    CFigures figures("Compressed images, 2048x2048 with noise, one thread unless told");
    SSubject grey("Mono8", Codec::EMode::Lossless, 100.0);
    reportOneThread(figures, grey, true);
    reportTwoThreads(figures, grey);
    reportEncoding(figures, grey);
    reportInfo(figures, grey);
    SSubject ratio("Mono8", Codec::EMode::FixedRatio, 33.0);
    reportOneThread(figures, ratio, false);
    reportEncoding(figures, ratio);
    for (const char* format : {"Mono12", "BayerRG8", "RGB8"})
    {
        SSubject subject(format, Codec::EMode::Lossless, 100.0);
        reportOneThread(figures, subject, false);
        reportEncoding(figures, subject);
    }
    return 0;
}
