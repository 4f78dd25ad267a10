// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>

namespace Test
{

/** The application of tests under the thread sanitizer: tells it that an emission happens before its delivery. */
class CAnnotatedApplication : public QCoreApplication
{
public:
    CAnnotatedApplication(int& argc, char** argv);
    bool notify(QObject* pReceiver, QEvent* pEvent) override;
};

} // namespace Test
