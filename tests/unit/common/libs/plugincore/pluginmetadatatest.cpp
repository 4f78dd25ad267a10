// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/internal/pluginmetadata.h"
#include "plugincore/internal/pluginresolver.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

namespace
{

using namespace Core::Plugin;

CPluginSpecPtr specOf(const char* metaData, const char* file = "libtest.so")
{
    const QJsonDocument document = QJsonDocument::fromJson(metaData);
    EXPECT_TRUE(document.isObject()) << metaData;
    return CPluginMetadata::fromJson(QString::fromLatin1(file),
                                     QJsonObject{{"IID", CORE_PLUGIN_IID}, {"MetaData", document.object()}});
}

std::string errorsOf(const CPluginSpecPtr& spec)
{
    return spec->errors().join(QLatin1Char('\n')).toStdString();
}

TEST(PluginMetadata, readsEveryEntry)
{
    const auto spec = specOf(R"({"Name": "N", "Version": "1.2.3", "CompatVersion": "1.1", "Required": true,
        "Dependencies": [{"Name": "D", "Version": "2.0.0"}], "Description": "d", "Vendor": "v", "Copyright": "c",
        "License": "l", "Url": "u"})");
    EXPECT_FALSE(spec->hasError()) << errorsOf(spec);
    EXPECT_EQ(spec->state(), EPluginState::Read);
    EXPECT_EQ(spec->name(), QStringLiteral("N"));
    EXPECT_EQ(spec->version(), QVersionNumber(1, 2, 3));
    EXPECT_EQ(spec->compatVersion(), QVersionNumber(1, 1));
    EXPECT_TRUE(spec->isRequired());
    ASSERT_EQ(spec->dependencies().size(), 1);
    EXPECT_EQ(spec->dependencies().first().name, QStringLiteral("D"));
    EXPECT_EQ(spec->dependencies().first().version, QVersionNumber(2, 0, 0));
    EXPECT_EQ(spec->description() + spec->vendor() + spec->copyright() + spec->license() + spec->url(),
              QStringLiteral("dvclu"));
}

TEST(PluginMetadata, compatVersionIsTheVersionWhenThereIsNone)
{
    EXPECT_EQ(specOf(R"({"Name": "N", "Version": "1.2.3"})")->compatVersion(), QVersionNumber(1, 2, 3));
}

struct SBadMetaData
{
    const char* metaData;
    const char* error;
};

class BadPluginMetadata : public ::testing::TestWithParam<SBadMetaData>
{
};

TEST_P(BadPluginMetadata, isAnErrorThatSaysWhat)
{
    const auto spec = specOf(GetParam().metaData);
    EXPECT_EQ(spec->state(), EPluginState::Found);
    ASSERT_EQ(spec->errors().size(), 1) << errorsOf(spec);
    EXPECT_NE(errorsOf(spec).find(GetParam().error), std::string::npos) << errorsOf(spec);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, BadPluginMetadata,
    ::testing::Values(
        SBadMetaData{R"({"Version": "1.0"})", "no name"}, SBadMetaData{R"({"Name": "", "Version": "1.0"})", "no name"},
        SBadMetaData{R"({"Name": 5, "Version": "1.0"})", "\"Name\""},
        SBadMetaData{R"({"Name": "N"})", "no entry \"Version\""},
        SBadMetaData{R"({"Name": "N", "Version": 1.0})", "\"Version\" of its metadata is not a text"},
        SBadMetaData{R"({"Name": "N", "Version": "one"})", "\"one\", is not a version"},
        SBadMetaData{R"({"Name": "N", "Version": "1.0-beta"})", "is not a version"},
        SBadMetaData{R"({"Name": "N", "Version": ""})", "is not a version"},
        SBadMetaData{R"({"Name": "N", "Version": "1.0", "CompatVersion": "x"})", "\"CompatVersion\""},
        SBadMetaData{R"({"Name": "N", "Version": "1.0", "CompatVersion": "1.1"})", "newer"},
        SBadMetaData{R"({"Name": "N", "Version": "1.0", "Required": "yes"})", "\"Required\""},
        SBadMetaData{R"({"Name": "N", "Version": "1.0", "Dependencies": "D"})", "\"Dependencies\""},
        SBadMetaData{R"({"Name": "N", "Version": "1.0", "Dependencies": [{"Version": "1.0"}]})", "number 1"},
        SBadMetaData{R"({"Name": "N", "Version": "1.0", "Dependencies": [{"Name": "D"}]})", "dependency D"},
        SBadMetaData{R"({"Name": "N", "Version": "1.0", "Vendor": 7})", "\"Vendor\""}));

TEST(PluginMetadata, aLibraryWithoutMetadataIsNoPlugin)
{
    const auto spec = CPluginMetadata::fromJson(QStringLiteral("/x/libc.so"), {});
    EXPECT_NE(errorsOf(spec).find("libc.so"), std::string::npos);
    EXPECT_NE(errorsOf(spec).find("no plugin metadata"), std::string::npos);
}

TEST(PluginMetadata, aFileThatDoesNotExistSaysSo)
{
    EXPECT_NE(errorsOf(CPluginMetadata::fromFile(QStringLiteral("/does/not/exist.so"))).find("does not exist"),
              std::string::npos);
}

TEST(PluginSpec, providesVersionsBetweenItsCompatVersionAndItsVersion)
{
    const auto spec = specOf(R"({"Name": "N", "Version": "1.4.0", "CompatVersion": "1.2.0"})");
    EXPECT_FALSE(spec->provides(QVersionNumber(1, 1, 9)));
    EXPECT_TRUE(spec->provides(QVersionNumber(1, 2, 0)));
    EXPECT_TRUE(spec->provides(QVersionNumber(1, 2))) << "trailing zeroes do not matter";
    EXPECT_TRUE(spec->provides(QVersionNumber(1, 4, 0)));
    EXPECT_TRUE(spec->provides(QVersionNumber(1, 4)));
    EXPECT_FALSE(spec->provides(QVersionNumber(1, 4, 1)));
}

TEST(PluginResolver, putsDependenciesFirstAndElseKeepsTheOrder)
{
    const auto user = specOf(R"({"Name": "U", "Version": "1.0", "Dependencies": [{"Name": "B", "Version": "1.0"}]})");
    const auto alone = specOf(R"({"Name": "A", "Version": "1.0"})");
    const auto base = specOf(R"({"Name": "B", "Version": "1.0"})");
    const auto order = CPluginResolver::resolve({user, alone, base});
    EXPECT_EQ(order, (QVector<CPluginSpecPtr>{base, user, alone}));
    EXPECT_EQ(user->state(), EPluginState::Resolved);
}

TEST(PluginResolver, theSecondPluginOfANameIsRefused)
{
    const auto first = specOf(R"({"Name": "N", "Version": "1.0"})", "first.so");
    const auto second = specOf(R"({"Name": "N", "Version": "2.0"})", "second.so");
    EXPECT_EQ(CPluginResolver::resolve({first, second}), QVector<CPluginSpecPtr>{first});
    EXPECT_NE(errorsOf(second).find("first.so has the same name"), std::string::npos) << errorsOf(second);
}

TEST(PluginResolver, everyMemberOfACircleNamesTheWholeCircle)
{
    const auto a = specOf(R"({"Name": "A", "Version": "1.0", "Dependencies": [{"Name": "B", "Version": "1.0"}]})");
    const auto b = specOf(R"({"Name": "B", "Version": "1.0", "Dependencies": [{"Name": "C", "Version": "1.0"}]})");
    const auto c = specOf(R"({"Name": "C", "Version": "1.0", "Dependencies": [{"Name": "A", "Version": "1.0"}]})");
    const auto user = specOf(R"({"Name": "U", "Version": "1.0", "Dependencies": [{"Name": "A", "Version": "1.0"}]})");
    EXPECT_TRUE(CPluginResolver::resolve({user, a, b, c}).isEmpty());
    for (const auto& member : {a, b, c})
    {
        EXPECT_NE(errorsOf(member).find("depends on itself: A -> B -> C -> A"), std::string::npos) << errorsOf(member);
        EXPECT_EQ(member->errors().size(), 1) << errorsOf(member);
    }
    EXPECT_NE(errorsOf(user).find("\"A\", which cannot be used"), std::string::npos) << errorsOf(user);
}

TEST(PluginResolver, aPluginThatNeedsItselfIsACircle)
{
    const auto a = specOf(R"({"Name": "A", "Version": "1.0", "Dependencies": [{"Name": "A", "Version": "1.0"}]})");
    EXPECT_TRUE(CPluginResolver::resolve({a}).isEmpty());
    EXPECT_NE(errorsOf(a).find("A -> A"), std::string::npos) << errorsOf(a);
}

} // namespace
