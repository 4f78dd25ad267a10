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
 * setLanguage("ja_JP") tries "ja_JP", then "ja", then "en"; with none of them the language stays. The translator is
 * installed in the application while the plugin lives; every change of language reaches the application as
 * QEvent::LanguageChange, at once or through the event loop. Main thread.
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
    bool load(const QString& file);

    QString m_catalogueName;
    QString m_language;
    QTranslator m_translator;
    bool m_isInstalled = false;
};

} // namespace Core::Plugin
