// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

#ifdef __SANITIZE_THREAD__
#include "support/tsanqt.h"
using TestApplication = Test::CAnnotatedApplication;
#else
using TestApplication = QCoreApplication;
#endif

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    TestApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("CameraPoolTests"));
    QCoreApplication::setApplicationName(QStringLiteral("unit"));
    // Settings of a test never reach those of the person who runs it.
    const QTemporaryDir settingsFolder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsFolder.path());
    return RUN_ALL_TESTS();
}
