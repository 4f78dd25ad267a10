// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/iplugin.h"

#include <QTranslator>

namespace Core::Plugin
{

/**
 * A plugin with translations of its own, compiled into its resources as ":/translation/<name>_<language>.qm".
 *
 * setLanguage("ja_JP") tries "ja_JP", then "ja", then "en". The translator is installed in the application while the
 * plugin lives. Main thread.
 */
class PLUGINCORE_EXPORT ALocalizedPlugin : public IPlugin
{
    Q_OBJECT
public:
    /** The name is the file-name prefix of the catalogues, such as "CameraPool". */
    explicit ALocalizedPlugin(const QString& catalogueName, QObject* parent = nullptr);
    ~ALocalizedPlugin() override;
    void setLanguage(const QString& language) override;
    /** The language whose catalogue is loaded; "" before the first setLanguage. */
    QString language() const { return m_language; }

private:
    QString m_catalogueName;
    QString m_language;
    QTranslator m_translator;
};

} // namespace Core::Plugin
