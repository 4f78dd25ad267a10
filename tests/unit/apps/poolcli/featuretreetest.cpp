// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/featuretree.h"

#include "genapi/inodemap.h"
#include "genapi/memoryport.h"
#include "parametercollection/parametercollection.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

constexpr const char* description = R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="M" VendorName="V" StandardNameSpace="None" SchemaMajorVersion="1" SchemaMinorVersion="1"
  SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ToolTip="" ProductGuid="1"
  VersionGuid="1" xmlns="http://www.genicam.org/GenApi/Version_1_1">
  <Category Name="Root"><pFeature>Image</pFeature><pFeature>Hidden</pFeature></Category>
  <Category Name="Image"><pFeature>Width</pFeature><pFeature>Expertly</pFeature></Category>
  <Category Name="Hidden"><Visibility>Invisible</Visibility><pFeature>Secret</pFeature></Category>
  <Integer Name="Width"><Visibility>Beginner</Visibility><pValue>WidthReg</pValue><Min>16</Min><Max>640</Max><Inc>16</Inc>
    <Unit>px</Unit></Integer>
  <IntReg Name="WidthReg"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>
    <Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <Integer Name="Expertly"><Visibility>Expert</Visibility><Value>1</Value></Integer>
  <Integer Name="Secret"><Value>1</Value></Integer>
  <Port Name="Device"/>
</RegisterDescription>)";

class FeatureTree : public testing::Test
{
protected:
    FeatureTree() : m_port(16), m_collection(m_state)
    {
        m_port.Poke(0, 320, 4);
        m_pNodeMap = GenApi::CNodeMapFactory::FromData(description, std::strlen(description)).CreateNodeMap();
        m_pNodeMap->Connect(&m_port);
        m_collection.announceNodeMap(QStringLiteral("@CameraDevice"));
        m_collection.attachNodeMap(QStringLiteral("@CameraDevice"), m_pNodeMap.get());
    }

    QStringList names(const QString& filter, const QString& visibility) const
    {
        QStringList result;
        for (const auto& feature : PoolCli::readFeatures(m_collection, filter, visibility))
        {
            result.append(feature.name);
        }
        return result;
    }

    GenApi::CMemoryPort m_port;
    std::unique_ptr<GenApi::INodeMap> m_pNodeMap;
    ParameterCollection::CObjectState m_state;
    ParameterCollection::CParameterCollection m_collection;
};

TEST_F(FeatureTree, showsValueUnitRangeAndAccessOfAFeature)
{
    const auto features = PoolCli::readFeatures(m_collection, QStringLiteral("wid"), QStringLiteral("Guru"));
    ASSERT_EQ(features.size(), 3);
    EXPECT_EQ(features[2].value, QStringLiteral("320"));
    EXPECT_EQ(features[2].unit, QStringLiteral("px"));
    EXPECT_EQ(features[2].range, QStringLiteral("16..640 step 16"));
    EXPECT_EQ(features[2].access, QStringLiteral("RW"));
    EXPECT_EQ(features[2].kind, QStringLiteral("Integer"));
    EXPECT_EQ(features[2].depth, 2);
}

TEST_F(FeatureTree, theFilterLeavesOutCategoriesWithoutAMatch)
{
    EXPECT_EQ(names(QStringLiteral("width"), QStringLiteral("Guru")),
              (QStringList{QStringLiteral("@CameraDevice"), QStringLiteral("Image"), QStringLiteral("Width")}));
}

TEST_F(FeatureTree, theVisibilityLimitsFeaturesAndCategories)
{
    EXPECT_FALSE(names(QString(), QStringLiteral("Beginner")).contains(QStringLiteral("Expertly")));
    EXPECT_TRUE(names(QString(), QStringLiteral("Expert")).contains(QStringLiteral("Expertly")));
    EXPECT_FALSE(names(QString(), QStringLiteral("Guru")).contains(QStringLiteral("Secret")));
    EXPECT_TRUE(names(QString(), QStringLiteral("Invisible")).contains(QStringLiteral("Secret")));
}

TEST_F(FeatureTree, nothingIsShownOfADetachedNodeMap)
{
    m_collection.detachAllNodeMaps();
    EXPECT_TRUE(PoolCli::readFeatures(m_collection, QString(), QStringLiteral("Guru")).isEmpty());
}

} // namespace
