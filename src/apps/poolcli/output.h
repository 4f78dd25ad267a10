// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

namespace PoolCli
{

/** One line on stdout, UTF-8, flushed. */
void printLine(const QString& text);
/** A line on stdout that the next one of these is written over; printLine ends it. For a terminal. */
void printOver(const QString& text);
/** One line on stderr. */
void printError(const QString& text);
/** An indented document. */
void printJson(const QJsonObject& object);
void printJson(const QJsonArray& array);
/** One compact line, for events and other streams of objects. */
void printJsonLine(const QJsonObject& object);
/** Columns as wide as their widest text; the first row is the heading. */
void printTable(const QVector<QVector<QString>>& rows);
/** errno of the first write to stdout that failed, EPIPE when its reader has gone; 0: all was written. Nothing is
 * printed after it. */
int outputError();
bool stdoutIsTerminal();
/** Whether stdout is a terminal on which lines can be drawn over: one that is not "dumb". */
bool canDraw();
/** Text of a person's width: control characters from outside are shown, not obeyed. */
QString printable(const QString& text);

} // namespace PoolCli
