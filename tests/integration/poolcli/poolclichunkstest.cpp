// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

namespace
{

using PoolCliTest::PoolCliProgram;
using PoolCliTest::SOutcome;

class PoolCliChunks : public PoolCliProgram
{
protected:
    static QVector<QJsonObject> objects(const QByteArray& out)
    {
        QVector<QJsonObject> result;
        for (const QByteArray& line : out.trimmed().split('\n'))
        {
            result.append(QJsonDocument::fromJson(line).object());
        }
        return result;
    }
};

TEST_F(PoolCliChunks, everyImageComesWithItsOwnValues)
{
    const SOutcome outcome = run({QStringLiteral("chunks"), QStringLiteral("EMU-A"), QStringLiteral("-n"),
                                  QStringLiteral("6"), QStringLiteral("--json")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const auto images = objects(outcome.out);
    ASSERT_EQ(images.size(), 6) << outcome.out.constData();
    for (const QJsonObject& image : images)
    {
        const QJsonObject chunks = image.value(QStringLiteral("chunks")).toObject();
        EXPECT_EQ(chunks.value(QStringLiteral("ChunkFrameID")).toString(),
                  QString::number(image.value(QStringLiteral("block_id")).toInt()));
        EXPECT_EQ(chunks.value(QStringLiteral("ChunkTimestamp")).toString(),
                  image.value(QStringLiteral("timestamp")).toString());
        EXPECT_TRUE(chunks.contains(QStringLiteral("ChunkExposureTime")));
    }
}

TEST_F(PoolCliChunks, onlyTheChunksThatWereAskedForAreShown)
{
    const SOutcome outcome =
        run({QStringLiteral("chunks"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("3"),
             QStringLiteral("--enable"), QStringLiteral("Gain,FrameID"), QStringLiteral("--json")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const QJsonObject chunks = objects(outcome.out).last().value(QStringLiteral("chunks")).toObject();
    EXPECT_TRUE(chunks.contains(QStringLiteral("ChunkGain"))) << outcome.out.constData();
    EXPECT_FALSE(chunks.contains(QStringLiteral("ChunkTimestamp"))) << outcome.out.constData();
}

TEST_F(PoolCliChunks, aLineForEachImageIsPrintedForPeople)
{
    const SOutcome outcome =
        run({QStringLiteral("chunks"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("4")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_EQ(outcome.out.trimmed().split('\n').size(), 4) << outcome.out.constData();
    EXPECT_TRUE(outcome.out.contains("ChunkFrameID=")) << outcome.out.constData();
}

TEST_F(PoolCliChunks, chunksOfCompressedImagesAreShownToo)
{
    writeData(R"({"cameras": [{"serial": "EMU-A", "features": {"ImageCompressionMode": "Lossless"}}]})");
    const SOutcome outcome =
        run({QStringLiteral("chunks"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("3")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_TRUE(outcome.out.contains("ChunkFrameID=")) << outcome.out.constData();
}

TEST_F(PoolCliChunks, chunkDataThatCannotBeReadStopNoGrabAndAreToldWithTheCamera)
{
    writeData(R"({"cameras": [{"serial": "EMU-A", "features": {"ChunkModeActive": true},
                               "faults": {"chunkLies": true}}]})");
    const SOutcome grab = run({QStringLiteral("grab"), QStringLiteral("EMU-A"), QStringLiteral("-n"),
                               QStringLiteral("4"), QStringLiteral("--json")});
    ASSERT_EQ(grab.exitCode, 0) << grab.err.constData();
    EXPECT_GE(grab.json().array().at(0).toObject().value(QStringLiteral("images")).toInt(), 4);
    EXPECT_EQ(grab.err.count("cannot be read"), 1) << grab.err.constData();
    EXPECT_TRUE(grab.err.contains("EMU-A") && grab.err.contains("claims")) << grab.err.constData();

    const SOutcome chunks =
        run({QStringLiteral("chunks"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("4")});
    EXPECT_EQ(chunks.exitCode, 1) << chunks.err.constData();
    EXPECT_TRUE(chunks.err.contains("without chunk data")) << chunks.err.constData();
    EXPECT_EQ(chunks.out.trimmed().split('\n').size(), 4) << chunks.out.constData();
}

TEST_F(PoolCliChunks, anUnknownChunkIsRefusedWithThoseThatThereAre)
{
    const SOutcome outcome = run(
        {QStringLiteral("chunks"), QStringLiteral("EMU-A"), QStringLiteral("--enable"), QStringLiteral("Nonsense")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("Nonsense") && outcome.err.contains("Timestamp")) << outcome.err.constData();
}

TEST_F(PoolCliChunks, zeroImagesAreWrongUsage)
{
    EXPECT_EQ(
        run({QStringLiteral("chunks"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("0")}).exitCode,
        2);
}

} // namespace
