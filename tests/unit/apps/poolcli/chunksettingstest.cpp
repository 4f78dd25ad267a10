// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/chunksettings.h"

#include "genapi/exceptions.h"
#include "parametercollection/parametercollection.h"
#include "parametercollection/parameterpath.h"
#include "transport/softwarenodemap.h"

#include <gtest/gtest.h>

#include <array>

namespace
{

using PoolCli::CChunkSettings;
using PoolCli::CRefusal;
using Velmo::Transport::CSoftwareNodeMap;
using Velmo::Transport::SSoftwareParameter;

SSoftwareParameter named(const char* name)
{
    SSoftwareParameter parameter;
    parameter.name = name;
    return parameter;
}

/** The chunk features of a camera with the chunks Image (on, fixed), Gain (off) and Timestamp (on). */
class ChunkSettings : public testing::Test
{
protected:
    ChunkSettings()
    {
        m_nodeMap.BeginCategory("ChunkDataControl", "");
        auto mode = named("ChunkModeActive");
        mode.getter = [this]
        {
            return m_mode;
        };
        mode.setter = [this](std::int64_t value)
        {
            m_mode = value;
        };
        m_nodeMap.AddBoolean(std::move(mode));
        auto selector = named("ChunkSelector");
        selector.entries = {{"Image", 0}, {"Gain", 1}, {"Timestamp", 2}};
        selector.getter = [this]
        {
            return m_selected;
        };
        selector.setter = [this](std::int64_t value)
        {
            m_selected = value;
        };
        m_nodeMap.AddEnumeration(std::move(selector));
        auto locked = named("IsImage");
        locked.getter = [this]
        {
            return std::int64_t{m_selected == 0 ? 1 : 0};
        };
        m_nodeMap.AddHidden(std::move(locked));
        auto enable = named("ChunkEnable");
        enable.lockedBy = "IsImage";
        enable.getter = [this]
        {
            return m_enabled.at(static_cast<std::size_t>(m_selected));
        };
        enable.setter = [this](std::int64_t value)
        {
            if (m_refusesToSwitchOff && value == 0)
            {
                GENICAM_THROW(AccessException, "stuck");
            }
            m_enabled.at(static_cast<std::size_t>(m_selected)) = value;
        };
        m_nodeMap.AddBoolean(std::move(enable));
        m_nodeMap.AddInteger(named("ChunkGain"));
        m_nodeMap.AddInteger(named("ChunkTimestamp"));
        m_nodeMap.Build();
        m_collection.reset(new ParameterCollection::CParameterCollection(m_state));
        m_collection->announceNodeMap(ParameterCollection::ParameterPath::CameraDevice);
        m_collection->attachNodeMap(ParameterCollection::ParameterPath::CameraDevice, m_nodeMap.Get());
    }
    ~ChunkSettings() override { m_collection->detachAllNodeMaps(); }

    using Enabled = std::array<std::int64_t, 3>;
    std::int64_t m_mode = 0;
    std::int64_t m_selected = 2;
    Enabled m_enabled{1, 0, 1};
    bool m_refusesToSwitchOff = false;
    CSoftwareNodeMap m_nodeMap{"Test"};
    ParameterCollection::CObjectState m_state;
    QSharedPointer<ParameterCollection::CParameterCollection> m_collection;
};

TEST_F(ChunkSettings, enablesThoseAskedForAloneAndRestoresWhatWas)
{
    CChunkSettings settings(m_collection);
    settings.enable({QStringLiteral("Gain")});
    EXPECT_EQ(m_mode, 1);
    EXPECT_EQ(m_enabled, (Enabled{1, 1, 0})); // the image's cannot be switched
    settings.restore();
    EXPECT_EQ(m_mode, 0);
    EXPECT_EQ(m_selected, 2);
    EXPECT_EQ(m_enabled, (Enabled{1, 0, 1}));
}

TEST_F(ChunkSettings, aChunkThatRefusesToBeSwitchedOffStaysOn)
{
    m_refusesToSwitchOff = true;
    CChunkSettings settings(m_collection);
    settings.enable({QStringLiteral("Gain")});
    EXPECT_EQ(m_enabled, (Enabled{1, 1, 1}));
}

TEST_F(ChunkSettings, withoutNamesAllAreEnabled)
{
    CChunkSettings settings(m_collection);
    settings.enable({});
    EXPECT_EQ(m_enabled, (Enabled{1, 1, 1}));
}

TEST_F(ChunkSettings, goingAwayRestores)
{
    m_mode = 1;
    {
        CChunkSettings settings(m_collection);
        settings.enable({QStringLiteral("Gain")});
    }
    EXPECT_EQ(m_mode, 1);
    EXPECT_EQ(m_enabled, (Enabled{1, 0, 1}));
}

TEST_F(ChunkSettings, anUnknownChunkChangesNothing)
{
    CChunkSettings settings(m_collection);
    EXPECT_THROW(settings.enable({QStringLiteral("Gain"), QStringLiteral("Nonsense")}), CRefusal);
    EXPECT_EQ(m_mode, 0);
    EXPECT_EQ(m_enabled, (Enabled{1, 0, 1}));
}

TEST_F(ChunkSettings, whatCannotBeRestoredIsToldAndTheRestRestored)
{
    CChunkSettings settings(m_collection);
    settings.enable({});
    m_refusesToSwitchOff = true;
    EXPECT_THROW(settings.restore(), CRefusal);
    EXPECT_EQ(m_mode, 0);
    EXPECT_EQ(m_selected, 2);
}

TEST_F(ChunkSettings, valueFeaturesAreThoseThatNobodySets)
{
    const CChunkSettings settings(m_collection);
    EXPECT_EQ(settings.valueFeatures(), (QStringList{QStringLiteral("ChunkGain"), QStringLiteral("ChunkTimestamp")}));
}

TEST_F(ChunkSettings, aCameraWithoutChunksIsRefused)
{
    m_collection->detachAllNodeMaps();
    EXPECT_THROW(CChunkSettings settings(m_collection), CRefusal);
}

} // namespace
