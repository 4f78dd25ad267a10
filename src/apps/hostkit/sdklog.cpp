// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/sdklog.h"

#include "velmo/log.h"

#include <QLoggingCategory>

namespace HostKit
{
namespace
{

QtMsgType typeOf(Velmo::ELogLevel level)
{
    switch (level)
    {
    case Velmo::ELogLevel::Debug:
        return QtDebugMsg;
    case Velmo::ELogLevel::Info:
        return QtInfoMsg;
    case Velmo::ELogLevel::Warning:
        return QtWarningMsg;
    case Velmo::ELogLevel::Error:
        break;
    }
    return QtCriticalMsg;
}

void write(const Velmo::SLogRecord& record)
{
    const QLoggingCategory category(record.category.c_str());
    const QtMsgType type = typeOf(record.level);
    if (category.isEnabled(type))
    {
        const QMessageLogContext context(nullptr, 0, nullptr, category.categoryName());
        qt_message_output(type, context, QString::fromStdString(record.text));
    }
}

} // namespace

void forwardSdkLog()
{
    Velmo::SetLogSink(&write);
}

} // namespace HostKit
