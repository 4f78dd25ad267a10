// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

namespace
{

using PoolCliTest::PoolCliProgram;
using PoolCliTest::SOutcome;

using PoolCliMonitor = PoolCliProgram;

TEST_F(PoolCliMonitor, startsNothingSoACameraThatNobodyStartedGivesNoImage)
{
    const SOutcome outcome = run({QStringLiteral("monitor"), QStringLiteral("EMU-A"), QStringLiteral("-s"),
                                  QStringLiteral("1"), QStringLiteral("--json")});
    EXPECT_EQ(outcome.exitCode, 1);
    const QJsonObject camera = outcome.json().array().at(0).toObject();
    EXPECT_EQ(camera.value(QStringLiteral("images")).toInt(-1), 0) << outcome.out.constData();
    EXPECT_FALSE(outcome.err.isEmpty());
}

TEST_F(PoolCliMonitor, takesNoSettings)
{
    const SOutcome outcome =
        run({QStringLiteral("monitor"), QStringLiteral("EMU-A"), QStringLiteral("--set"), QStringLiteral("Width=64")});
    EXPECT_EQ(outcome.exitCode, 2);
}

} // namespace
