// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/output.h"

#include <QJsonDocument>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace PoolCli
{
namespace
{

void print(std::FILE* file, const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), file);
    std::fflush(file);
}

} // namespace

void printLine(const QString& text)
{
    print(stdout, text.toUtf8() + '\n');
}

void printError(const QString& text)
{
    print(stderr, "poolcli: " + text.toUtf8() + '\n');
}

void printJson(const QJsonObject& object)
{
    print(stdout, QJsonDocument(object).toJson(QJsonDocument::Indented));
}

void printJson(const QJsonArray& array)
{
    print(stdout, QJsonDocument(array).toJson(QJsonDocument::Indented));
}

void printJsonLine(const QJsonObject& object)
{
    print(stdout, QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

void printTable(const QVector<QVector<QString>>& rows)
{
    QVector<int> widths;
    for (const auto& row : rows)
    {
        widths.resize(std::max(widths.size(), row.size()));
        for (int column = 0; column < row.size(); ++column)
        {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    for (const auto& row : rows)
    {
        QString line;
        for (int column = 0; column < row.size(); ++column)
        {
            line += column + 1 < row.size() ? row[column].leftJustified(widths[column] + 2) : row[column];
        }
        printLine(line);
    }
}

bool stdoutIsTerminal()
{
    return isatty(STDOUT_FILENO) != 0;
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
