// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/alocalizedplugin.h"

#include <QCoreApplication>

namespace Core::Plugin
{

ALocalizedPlugin::ALocalizedPlugin(const QString& catalogueName, QObject* parent)
    : IPlugin(parent), m_catalogueName(catalogueName)
{
}

ALocalizedPlugin::~ALocalizedPlugin()
{
    QCoreApplication::removeTranslator(&m_translator);
}

void ALocalizedPlugin::setLanguage(const QString& language)
{
    const QStringList candidates{language, language.section(QLatin1Char('_'), 0, 0), QStringLiteral("en")};
    for (const QString& candidate : candidates)
    {
        const QString file = QStringLiteral(":/translation/%1_%2.qm").arg(m_catalogueName, candidate);
        if (!candidate.isEmpty() && m_translator.load(file))
        {
            m_language = candidate;
            QCoreApplication::installTranslator(&m_translator);
            return;
        }
    }
}

} // namespace Core::Plugin
