// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/alocalizedplugin.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>

namespace
{

class CLocalizedPlugin : public Core::Plugin::ALocalizedPlugin
{
public:
    explicit CLocalizedPlugin(const QString& catalogue = QStringLiteral("TestCatalogue")) : ALocalizedPlugin(catalogue)
    {
    }
    bool initialize(QPointer<Core::Plugin::IPluginInitializer>) override { return true; }
    bool postInitialize() override { return true; }
    bool unInitialize(QPointer<Core::Plugin::IPluginInitializer>) override { return true; }
};

class CLanguageChanges : public QObject
{
public:
    CLanguageChanges() { qApp->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::LanguageChange ? 1 : 0;
        return false;
    }
    int count = 0;
};

QString translated()
{
    return QCoreApplication::translate("TestContext", "language");
}

TEST(LocalizedPlugin, translatesOnceALanguageIsSet)
{
    CLocalizedPlugin plugin;
    EXPECT_EQ(translated(), QStringLiteral("language"));
    plugin.setLanguage(QStringLiteral("ja"));
    EXPECT_EQ(translated(), QStringLiteral("ja"));
    EXPECT_EQ(plugin.language(), QStringLiteral("ja"));
}

TEST(LocalizedPlugin, changesTheLanguageWhileInstalledAndTellsTheApplication)
{
    CLocalizedPlugin plugin;
    plugin.setLanguage(QStringLiteral("ja"));
    CLanguageChanges changes;
    QCoreApplication::processEvents();
    changes.count = 0;
    plugin.setLanguage(QStringLiteral("en"));
    QCoreApplication::processEvents();
    EXPECT_EQ(translated(), QStringLiteral("en"));
    EXPECT_EQ(changes.count, 1);
}

TEST(LocalizedPlugin, takesTheLanguageOfACountry)
{
    CLocalizedPlugin plugin;
    for (const char* code : {"ja_JP", "ja-JP", "ja_JP.UTF-8"})
    {
        plugin.setLanguage(QStringLiteral("en"));
        plugin.setLanguage(QLatin1String(code));
        EXPECT_EQ(translated(), QStringLiteral("ja")) << code;
    }
}

TEST(LocalizedPlugin, anUnknownLanguageIsEnglish)
{
    CLocalizedPlugin plugin;
    plugin.setLanguage(QStringLiteral("ja"));
    plugin.setLanguage(QStringLiteral("xx"));
    EXPECT_EQ(translated(), QStringLiteral("en"));
    EXPECT_EQ(plugin.language(), QStringLiteral("en"));
    plugin.setLanguage(QStringLiteral("ja"));
    plugin.setLanguage(QString());
    EXPECT_EQ(translated(), QStringLiteral("en"));
}

TEST(LocalizedPlugin, withoutCataloguesNothingChanges)
{
    CLocalizedPlugin plugin(QStringLiteral("NoSuchCatalogue"));
    plugin.setLanguage(QStringLiteral("ja"));
    EXPECT_EQ(plugin.language(), QString());
    EXPECT_EQ(translated(), QStringLiteral("language"));
}

TEST(LocalizedPlugin, takesItsTranslationsWithIt)
{
    {
        CLocalizedPlugin plugin;
        plugin.setLanguage(QStringLiteral("ja"));
        plugin.setLanguage(QStringLiteral("en"));
    }
    EXPECT_EQ(translated(), QStringLiteral("language"));
}

} // namespace
