// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

#include <QDir>
#include <QImage>

namespace
{

using PoolCliTest::PoolCliProgram;
using PoolCliTest::SOutcome;

class PoolCliCompression : public PoolCliProgram
{
protected:
    /** A snapshot of the fixed test image. */
    QImage snapshot(const QString& file, const QStringList& settings) const
    {
        QStringList arguments{QStringLiteral("snapshot"), QStringLiteral("EMU-A"),
                              QStringLiteral("-o"),       file,
                              QStringLiteral("--set"),    QStringLiteral("TestPattern=GreyHorizontalRamp")};
        for (const QString& setting : settings)
        {
            arguments << QStringLiteral("--set") << setting;
        }
        const SOutcome outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err.constData();
        return QImage(m_folder.filePath(file));
    }
};

TEST_F(PoolCliCompression, losslessPicturesAreThoseWithoutCompression)
{
    const QImage plain = snapshot(QStringLiteral("plain.png"), {});
    const QImage decoded = snapshot(QStringLiteral("decoded.png"), {QStringLiteral("ImageCompressionMode=Lossless")});
    ASSERT_FALSE(plain.isNull());
    EXPECT_TRUE(plain == decoded);
}

TEST_F(PoolCliCompression, grabCountsLosslessImagesAndTheirRatios)
{
    const SOutcome outcome =
        run({QStringLiteral("grab"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("8"),
             QStringLiteral("--set"), QStringLiteral("ImageCompressionMode=Lossless"), QStringLiteral("--json"),
             QStringLiteral("-o"), QStringLiteral("pictures")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const QJsonObject camera = outcome.json().array().at(0).toObject();
    const QJsonObject compression = camera.value(QStringLiteral("compression")).toObject();
    EXPECT_GE(compression.value(QStringLiteral("lossless")).toInt(), 8) << outcome.out.constData();
    EXPECT_EQ(compression.value(QStringLiteral("lossy")).toInt(), 0);
    EXPECT_EQ(compression.value(QStringLiteral("failed")).toInt(), 0);
    const double ratio = compression.value(QStringLiteral("ratio")).toDouble();
    EXPECT_GT(ratio, 0.0);
    EXPECT_LT(ratio, 100.0);
    EXPECT_LE(compression.value(QStringLiteral("min_ratio")).toDouble(), ratio);
    EXPECT_GE(compression.value(QStringLiteral("max_ratio")).toDouble(), ratio);
    const QDir pictures(m_folder.filePath(QStringLiteral("pictures")));
    const QStringList files = pictures.entryList({QStringLiteral("*.png")});
    ASSERT_EQ(files.size(), 1);
    EXPECT_FALSE(QImage(pictures.filePath(files.first())).isNull());
}

TEST_F(PoolCliCompression, liveLinesOfALossyGrabShowTheRatio)
{
    const SOutcome outcome =
        run({QStringLiteral("grab"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("8"),
             QStringLiteral("--set"), QStringLiteral("ImageCompressionMode=FixedRatio"), QStringLiteral("--set"),
             QStringLiteral("ImageCompressionRatio=20"), QStringLiteral("--set"),
             QStringLiteral("TestPattern=NoisyScene")}); // too little for it without a loss
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_TRUE(outcome.out.contains("compressed to")) << outcome.out.constData();
    EXPECT_FALSE(outcome.out.contains(" 0 lossy")) << outcome.out.constData();
}

TEST_F(PoolCliCompression, imagesOfWhichNoneCanBeDecodedHaveNoRatioAndEndWithOneAndAReason)
{
    writeData(R"({"cameras": [{"serial": "EMU-A", "sensor": {"width": 32, "height": 32}, "features": {
        "ImageCompressionMode": "FixedRatio", "ImageCompressionRatio": 5, "TestPattern": "NoisyScene"}}]})");
    const QStringList grab{QStringLiteral("grab"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("3")};
    const SOutcome text = run(grab);
    EXPECT_EQ(text.exitCode, 1) << text.err.constData();
    EXPECT_TRUE(text.out.contains("not decodable")) << text.out.constData();
    EXPECT_FALSE(text.out.contains("compressed to")) << text.out.constData();
    EXPECT_TRUE(text.err.contains("EMU-A") && text.err.contains("can be decoded")) << text.err.constData();
    const SOutcome json = run(QStringList(grab) << QStringLiteral("--json"));
    EXPECT_EQ(json.exitCode, 1) << json.err.constData();
    const QJsonObject compression =
        json.json().array().at(0).toObject().value(QStringLiteral("compression")).toObject();
    EXPECT_GE(compression.value(QStringLiteral("failed")).toInt(), 3) << json.out.constData();
    EXPECT_FALSE(compression.contains(QStringLiteral("ratio"))) << json.out.constData();
    const SOutcome chunks = run({QStringLiteral("chunks"), QStringLiteral("EMU-A"), QStringLiteral("-n"),
                                 QStringLiteral("2")}); // which can be read all the same
    EXPECT_EQ(chunks.exitCode, 0) << chunks.err.constData();
}

TEST_F(PoolCliCompression, settingForOneCameraLeavesTheOtherAlone)
{
    const SOutcome outcome =
        run({QStringLiteral("grab"), QStringLiteral("-n"), QStringLiteral("3"), QStringLiteral("--json"),
             QStringLiteral("--set-for"), QStringLiteral("EMU-B"), QStringLiteral("ImageCompressionMode=Lossless")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    for (const auto& value : outcome.json().array())
    {
        const QJsonObject camera = value.toObject();
        const bool isMeant = camera.value(QStringLiteral("camera")).toString().contains(QStringLiteral("EMU-B"));
        EXPECT_EQ(camera.contains(QStringLiteral("compression")), isMeant) << outcome.out.constData();
    }
}

TEST_F(PoolCliCompression, settingForACameraThatIsNotGrabbedIsRefusedWithItsName)
{
    const SOutcome outcome =
        run({QStringLiteral("grab"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("3"),
             QStringLiteral("--set-for"), QStringLiteral("EMU-B"), QStringLiteral("Gain=1")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("EMU-B")) << outcome.err.constData();
}

TEST_F(PoolCliCompression, withoutCompressionNoRatioIsShown)
{
    const SOutcome outcome =
        run({QStringLiteral("grab"), QStringLiteral("EMU-A"), QStringLiteral("-n"), QStringLiteral("3")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_FALSE(outcome.out.contains("compressed to")) << outcome.out.constData();
}

TEST_F(PoolCliCompression, statsHoldsTheCompressionOfTheSourceNode)
{
    writeData(R"({"cameras": [{"serial": "EMU-A", "features": {"ImageCompressionMode": "Lossless"}}]})");
    const SOutcome stats = run({QStringLiteral("stats"), QStringLiteral("EMU-A"), QStringLiteral("-n"),
                                QStringLiteral("5"), QStringLiteral("--json")});
    ASSERT_EQ(stats.exitCode, 0) << stats.err.constData();
    const QJsonObject last = QJsonDocument::fromJson(stats.out.trimmed().split('\n').last()).object();
    EXPECT_TRUE(last.value(QStringLiteral("compression_enabled")).toBool()) << stats.out.constData();
    EXPECT_GE(last.value(QStringLiteral("lossless_count")).toInt(), 5) << stats.out.constData();
    EXPECT_LT(last.value(QStringLiteral("compression_ratio")).toDouble(), 100.0) << stats.out.constData();
}

} // namespace
