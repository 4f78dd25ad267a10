// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

namespace
{

struct SMessage
{
    QString translation;
    QString type; // "": finished
};
/** By context and source text. */
using Messages = QMap<QPair<QString, QString>, SMessage>;

Messages read(const QString& fileName)
{
    Messages messages;
    QFile file(fileName);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << fileName.toStdString();
    QXmlStreamReader xml(&file);
    QString context;
    QString source;
    while (!xml.atEnd())
    {
        if (xml.readNext() != QXmlStreamReader::StartElement)
        {
            continue;
        }
        if (xml.name() == QLatin1String("name"))
        {
            context = xml.readElementText();
        }
        else if (xml.name() == QLatin1String("source"))
        {
            source = xml.readElementText();
        }
        else if (xml.name() == QLatin1String("translation"))
        {
            const auto type = xml.attributes().value(QLatin1String("type")).toString();
            messages.insert({context, source}, {xml.readElementText(), type});
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return messages;
}

/** What the sources of the plugin have to translate. */
Messages textsOfTheSources()
{
    const QTemporaryDir folder;
    const QString collected = folder.filePath(QStringLiteral("collected.ts"));
    QProcess lupdate;
    // The headers tell lupdate the namespaces of the classes.
    lupdate.start(QStringLiteral(LUPDATE),
                  {QStringLiteral("-silent"), QStringLiteral(CAMERAPOOL_SOURCES), QStringLiteral("-I"),
                   QStringLiteral(CAMERAPOOL_SOURCES "/.."), QStringLiteral("-ts"), collected});
    EXPECT_TRUE(lupdate.waitForFinished(60000)) << LUPDATE << " does not end";
    EXPECT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().constData();
    return read(collected);
}

class Catalogue : public ::testing::TestWithParam<const char*>
{
protected:
    Messages m_catalogue =
        read(QStringLiteral(CAMERAPOOL_SOURCES "/translations/CameraPool_%1.ts").arg(QString::fromLatin1(GetParam())));
};

TEST_P(Catalogue, hasEveryTextOfTheSources)
{
    const auto texts = textsOfTheSources();
    ASSERT_FALSE(texts.isEmpty());
    for (auto text = texts.cbegin(); text != texts.cend(); ++text)
    {
        EXPECT_TRUE(m_catalogue.contains(text.key()))
            << text.key().first.toStdString() << ": " << text.key().second.toStdString();
    }
}

TEST_P(Catalogue, isFinishedAndTrulyTranslated)
{
    ASSERT_FALSE(m_catalogue.isEmpty());
    const bool isEnglish = QLatin1String(GetParam()) == QLatin1String("en");
    for (auto message = m_catalogue.cbegin(); message != m_catalogue.cend(); ++message)
    {
        const auto source = message.key().second;
        EXPECT_EQ(message->type, QString()) << source.toStdString();
        EXPECT_FALSE(message->translation.isEmpty()) << source.toStdString();
        EXPECT_EQ(message->translation == source, isEnglish) << source.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, Catalogue, ::testing::Values("ja", "zh", "en", "ko"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
