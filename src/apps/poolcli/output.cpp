// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/output.h"

#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace PoolCli
{
namespace
{

bool print(std::FILE* file, const QByteArray& bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, file) == size && std::fflush(file) == 0;
}

/** errno of the first write to stdout that failed. */
int& firstError()
{
    static int number = 0;
    return number;
}

void printOut(const QByteArray& bytes)
{
    if (firstError() == 0 && !print(stdout, bytes))
    {
        firstError() = errno;
    }
}

/** Columns of a terminal that the text takes: East Asian wide characters take two (Unicode TR 11). */
int displayWidth(const QString& text)
{
    struct SRange
    {
        ushort first;
        ushort last;
    };
    static constexpr std::array wide{SRange{0x1100, 0x115F}, SRange{0x2E80, 0xA4CF}, SRange{0xAC00, 0xD7A3},
                                     SRange{0xF900, 0xFAFF}, SRange{0xFE30, 0xFE6F}, SRange{0xFF00, 0xFF60}};
    int width = 0;
    for (const QChar character : text)
    {
        const ushort code = character.unicode();
        const bool isWide =
            std::any_of(wide.begin(), wide.end(),
                        [code](const SRange& range) { return code >= range.first && code <= range.last; });
        width += isWide ? 2 : 1;
    }
    return width;
}

} // namespace

void printLine(const QString& text)
{
    printOut(text.toUtf8() + '\n');
}

void printOver(const QString& text)
{
    // ECMA-48: erase to the end of the line. Without the wrap at the edge (DECAWM): a line that went on in the next one
    // could not be drawn over.
    printOut("\033[?7l\r\033[K" + text.toUtf8() + "\033[?7h");
}

void printError(const QString& text)
{
    print(stderr, "poolcli: " + text.toUtf8() + '\n');
}

void printJson(const QJsonObject& object)
{
    printOut(QJsonDocument(object).toJson(QJsonDocument::Indented));
}

void printJson(const QJsonArray& array)
{
    printOut(QJsonDocument(array).toJson(QJsonDocument::Indented));
}

void printJsonLine(const QJsonObject& object)
{
    printOut(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

void printTable(const QVector<QVector<QString>>& rows)
{
    QVector<int> widths;
    for (const auto& row : rows)
    {
        widths.resize(std::max(widths.size(), row.size()));
        for (int column = 0; column < row.size(); ++column)
        {
            widths[column] = std::max(widths[column], displayWidth(row[column]));
        }
    }
    for (const auto& row : rows)
    {
        QString line;
        for (int column = 0; column < row.size(); ++column)
        {
            line += row[column];
            if (column + 1 < row.size())
            {
                line += QString(widths[column] + 2 - displayWidth(row[column]), QLatin1Char(' '));
            }
        }
        printLine(line);
    }
}

int outputError()
{
    return firstError();
}

bool stdoutIsTerminal()
{
    return isatty(STDOUT_FILENO) != 0;
}

bool canDraw()
{
    return stdoutIsTerminal() && qgetenv("TERM") != "dumb";
}

QString printable(const QString& text)
{
    QString result = text;
    for (QChar& character : result)
    {
        if (character.unicode() < 0x20 || character.unicode() == 0x7F)
        {
            character = QChar(0xFFFD);
        }
    }
    return result;
}

} // namespace PoolCli
