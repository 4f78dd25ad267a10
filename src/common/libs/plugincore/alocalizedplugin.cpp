// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/alocalizedplugin.h"

#include <QCoreApplication>
#include <QFile>

namespace Core::Plugin
{

ALocalizedPlugin::ALocalizedPlugin(const QString& catalogueName, QObject* parent)
    : IPlugin(parent), m_catalogueName(catalogueName)
{
}

ALocalizedPlugin::~ALocalizedPlugin()
{
    if (QCoreApplication::instance() != nullptr)
    {
        QCoreApplication::removeTranslator(&m_translator);
    }
}

void ALocalizedPlugin::setLanguage(const QString& language)
{
    const QString code = language.section(QLatin1Char('.'), 0, 0).replace(QLatin1Char('-'), QLatin1Char('_'));
    const QStringList candidates{code, code.section(QLatin1Char('_'), 0, 0), QStringLiteral("en")};
    for (const QString& candidate : candidates)
    {
        const QString file = QStringLiteral(":/translation/%1_%2.qm").arg(m_catalogueName, candidate);
        // Loading clears the translator first, so that a file that is not there would cost the language shown now.
        if (candidate.isEmpty() || !QFile::exists(file))
        {
            continue;
        }
        if (candidate == m_language || load(file))
        {
            m_language = candidate;
            return;
        }
    }
    qWarning("There are no translations of \"%s\" for the language \"%s\".", qUtf8Printable(m_catalogueName),
             qUtf8Printable(language));
}

bool ALocalizedPlugin::load(const QString& file)
{
    if (!m_translator.load(file))
    {
        return false;
    }
    // An installed translator tells the application of its new contents itself; installing it again would list it
    // twice.
    if (!m_isInstalled)
    {
        m_isInstalled = QCoreApplication::installTranslator(&m_translator);
    }
    return true;
}

} // namespace Core::Plugin
