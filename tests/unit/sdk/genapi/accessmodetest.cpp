// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/sdk/genapi/nodemapfixture.h"

#include <gmock/gmock.h>

namespace GenApi
{
namespace
{

using ::testing::HasSubstr;

class AccessMode : public CNodeMapTest
{
protected:
    static std::string Switch(const std::string& name, int value)
    {
        return "<Integer Name=\"" + name + "\"><Value>" + std::to_string(value) + "</Value></Integer>";
    }
};

TEST_F(AccessMode, ofARegisterIsItsOwnAndReadOnlyWhenNotGiven)
{
    Load("<IntReg Name=\"RW\">" + At(0, 4) + "</IntReg><IntReg Name=\"WO\">" + At(0, 4, "WO") +
         "</IntReg><IntReg Name=\"None\"><Address>0</Address><Length>4</Length><pPort>Device</pPort></IntReg>");
    EXPECT_EQ(Mode("RW"), EAccessMode::RW);
    EXPECT_EQ(Mode("WO"), EAccessMode::WO);
    EXPECT_EQ(Mode("None"), EAccessMode::RO);
    EXPECT_THROW(Integer("WO").GetValue(), GenICam::AccessException);
    EXPECT_THROW(Integer("None").SetValue(1), GenICam::AccessException);
}

TEST_F(AccessMode, isLimitedByTheImposedOneAndByTheSource)
{
    Load("<Integer Name=\"A\"><ImposedAccessMode>RO</ImposedAccessMode><pValue>R</pValue></Integer>"
         "<Integer Name=\"B\"><ImposedAccessMode>WO</ImposedAccessMode><pValue>O</pValue></Integer>" +
         IntReg("R", 0) + "<IntReg Name=\"O\">" + At(4, 4, "RO") + "</IntReg>");
    EXPECT_EQ(Mode("A"), EAccessMode::RO);
    EXPECT_EQ(Mode("B"), EAccessMode::NA);
}

TEST_F(AccessMode, followsImplementationAvailabilityAndLock)
{
    Load("<Integer Name=\"A\"><pIsImplemented>I</pIsImplemented><pIsAvailable>V</pIsAvailable>"
         "<pIsLocked>L</pIsLocked><Value>1</Value></Integer>" +
         Switch("I", 1) + Switch("V", 1) + Switch("L", 0));
    EXPECT_EQ(Mode("A"), EAccessMode::RW);
    Integer("L").SetValue(1);
    EXPECT_EQ(Mode("A"), EAccessMode::RO);
    Integer("V").SetValue(0);
    EXPECT_EQ(Mode("A"), EAccessMode::NA);
    Integer("I").SetValue(0);
    EXPECT_EQ(Mode("A"), EAccessMode::NI);
}

/** Reads, but does not write, and says why. */
class CWatchedPort final : public CMemoryPort
{
public:
    using CMemoryPort::CMemoryPort;
    EAccessMode GetAccessMode() const override { return isWritable ? EAccessMode::RW : EAccessMode::RO; }
    GenICam::gcstring GetWriteRefusal() const override { return reason; }
    bool isWritable = false;
    std::string reason = "somebody watches";
};

/** What a write of 1 is answered with; empty when it succeeds. */
std::string RefusalOf(IValue& value)
{
    try
    {
        value.FromString("1");
    }
    catch (const GenICam::AccessException& e)
    {
        return e.GetDescription();
    }
    return {};
}

class WriteRefusal : public AccessMode
{
protected:
    void LoadWatched(const std::string& nodes)
    {
        Load(nodes);
        m_map->Disconnect(&m_port);
        m_map->Connect(&m_watched);
    }
    std::string Of(const std::string& name) { return RefusalOf(Get<IValue>(name)); }

    CWatchedPort m_watched{64};
};

TEST_F(WriteRefusal, ofThePortIsToldForEveryNodeThatWritesThroughIt)
{
    LoadWatched("<Integer Name=\"I\"><pValue>R</pValue></Integer>"
                "<Boolean Name=\"B\"><pValue>I</pValue></Boolean>"
                "<Enumeration Name=\"E\"><EnumEntry Name=\"1\"><Value>1</Value></EnumEntry><pValue>R</pValue>"
                "</Enumeration>"
                "<Command Name=\"C\"><pValue>W</pValue><CommandValue>1</CommandValue></Command>"
                "<IntConverter Name=\"V\"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>R</pValue>"
                "</IntConverter>"
                "<StringReg Name=\"S\">" +
                At(8, 8) + "</StringReg><IntReg Name=\"W\">" + At(4, 4, "WO") + "</IntReg>" + IntReg("R", 0));
    for (const char* name : {"R", "I", "E", "V", "S"})
    {
        EXPECT_EQ(Of(name), std::string("Node '") + name + "' is not writable: somebody watches");
    }
    EXPECT_THAT(Of("B"), HasSubstr("somebody watches"));
    EXPECT_THAT(Of("C"), HasSubstr("somebody watches"));
}

TEST_F(WriteRefusal, ofThePortIsNotBlamedForWhatTheDescriptionForbids)
{
    LoadWatched("<Integer Name=\"Imposed\"><ImposedAccessMode>RO</ImposedAccessMode><pValue>R</pValue></Integer>"
                "<Integer Name=\"Locked\"><pIsLocked>L</pIsLocked><pValue>R</pValue></Integer>"
                "<Integer Name=\"Gone\"><pIsAvailable>A</pIsAvailable><pValue>R</pValue></Integer>"
                "<IntReg Name=\"Fixed\">" +
                At(4, 4, "RO") + "</IntReg>" + Switch("L", 1) + Switch("A", 0) + IntReg("R", 0));
    for (const char* name : {"Imposed", "Locked", "Fixed"})
    {
        EXPECT_EQ(Of(name), std::string("Node '") + name + "' is not writable: it is read-only or locked");
    }
    EXPECT_EQ(Of("Gone"), "Node 'Gone' is not writable: it is not available");
}

TEST_F(WriteRefusal, fallsBackToTheAccessModeWhenThePortSaysNothing)
{
    m_watched.reason.clear();
    LoadWatched(IntReg("R", 0));
    EXPECT_EQ(Of("R"), "Node 'R' is not writable: it is read-only or locked");
    m_watched.isWritable = true;
    m_map->InvalidateNodes();
    EXPECT_EQ(Of("R"), "");
}

TEST_F(AccessMode, errorsNameTheNodeAndTheReason)
{
    Load("<Integer Name=\"Width\"><pIsLocked>L</pIsLocked><Value>1</Value></Integer>" + Switch("L", 1));
    try
    {
        Integer("Width").SetValue(1);
        FAIL() << "no exception";
    }
    catch (const GenICam::AccessException& e)
    {
        EXPECT_THAT(e.GetDescription(), HasSubstr("'Width'"));
        EXPECT_THAT(e.GetDescription(), HasSubstr("locked"));
    }
}

TEST_F(AccessMode, aLockOfWhatIsWrittenLocksTheWriter)
{
    Load("<Integer Name=\"A\"><pValue>B</pValue></Integer>"
         "<Integer Name=\"B\"><pIsLocked>L</pIsLocked><Value>1</Value></Integer>" +
         Switch("L", 1));
    EXPECT_EQ(Mode("A"), EAccessMode::RO);
    EXPECT_THROW(Integer("A").SetValue(3, false), GenICam::AccessException);
}

TEST_F(AccessMode, lockThatReadsTheLockedNodeIsAllowed)
{
    Load("<Integer Name=\"A\"><pIsLocked>K</pIsLocked><Value>1</Value></Integer>"
         "<IntSwissKnife Name=\"K\"><pVariable Name=\"X\">A</pVariable><Formula>X &gt; 5</Formula></IntSwissKnife>");
    Integer("A").SetValue(6);
    EXPECT_EQ(Mode("A"), EAccessMode::RO);
}

TEST_F(AccessMode, conditionThatCannotBeReadMeansNotAvailable)
{
    Load("<Integer Name=\"A\"><pIsImplemented>W</pIsImplemented><Value>1</Value></Integer><IntReg Name=\"W\">" +
         At(0, 4, "WO") + "</IntReg>");
    EXPECT_EQ(Mode("A"), EAccessMode::NA);
}

TEST_F(AccessMode, swissKnifeIsNotAvailableWhileAVariableIsNot)
{
    Load("<IntSwissKnife Name=\"K\"><pVariable Name=\"X\">A</pVariable><Formula>X</Formula></IntSwissKnife>"
         "<Integer Name=\"A\"><pIsAvailable>V</pIsAvailable><Value>1</Value></Integer>" +
         Switch("V", 0));
    EXPECT_EQ(Mode("K"), EAccessMode::NA);
    Integer("V").SetValue(1);
    EXPECT_EQ(Mode("K"), EAccessMode::RO);
}

TEST_F(AccessMode, withoutAPortRegistersAreNotAvailable)
{
    Load(IntReg("R", 0));
    EXPECT_EQ(Mode("R"), EAccessMode::RW);
    m_map->Disconnect(&m_port);
    EXPECT_EQ(Mode("R"), EAccessMode::NA);
    EXPECT_THROW(Integer("R").GetValue(), GenICam::AccessException);
    EXPECT_TRUE(m_map->Connect(&m_port, "Device"));
    EXPECT_EQ(Mode("R"), EAccessMode::RW);
    EXPECT_FALSE(m_map->Connect(&m_port, "Nowhere"));
    EXPECT_FALSE(m_map->Connect(&m_port, "R"));
}

class CReadOnlyPort final : public IPort
{
public:
    EAccessMode GetAccessMode() const override { return EAccessMode::RO; }
    void Read(void* buffer, std::int64_t, std::int64_t length) override
    {
        std::fill_n(static_cast<std::uint8_t*>(buffer), length, std::uint8_t{1});
    }
    void Write(const void*, std::int64_t, std::int64_t) override { throw std::logic_error("written"); }
};

TEST_F(AccessMode, aPortThatCanOnlyBeReadMakesItsRegistersReadOnly)
{
    CReadOnlyPort port;
    Load(IntReg("R", 0));
    m_map->Connect(&port);
    EXPECT_EQ(Mode("R"), EAccessMode::RO);
    EXPECT_EQ(Integer("R").GetValue(), 0x01010101);
    EXPECT_THROW(Integer("R").SetValue(1), GenICam::AccessException);
}

TEST_F(AccessMode, valuesOutsideTheLimitsOrOffTheIncrementAreRefused)
{
    Load("<Integer Name=\"A\"><Value>4</Value><Min>-4</Min><Max>12</Max><Inc>4</Inc></Integer>"
         "<Float Name=\"F\"><Value>0.1</Value><Min>0.1</Min><Max>5</Max><Inc>0.1</Inc></Float>"
         "<Integer Name=\"S\"><Value>1</Value><ValidValueSet>1;2;0x10</ValidValueSet></Integer>");
    EXPECT_THROW(Integer("A").SetValue(-5), GenICam::OutOfRangeException);
    EXPECT_THROW(Integer("A").SetValue(16), GenICam::OutOfRangeException);
    EXPECT_THROW(Integer("A").SetValue(5), GenICam::OutOfRangeException);
    Integer("A").SetValue(8);
    EXPECT_EQ(Integer("A").GetIncMode(), EIncMode::FixedIncrement);
    Float("F").SetValue(0.7);
    EXPECT_THROW(Float("F").SetValue(0.75), GenICam::OutOfRangeException);
    Integer("S").SetValue(16);
    EXPECT_THROW(Integer("S").SetValue(3), GenICam::OutOfRangeException);
}

TEST_F(AccessMode, withoutVerificationLimitsAreNotChecked)
{
    Load("<Integer Name=\"A\"><Value>4</Value><Max>12</Max></Integer>");
    Integer("A").SetValue(100, false);
    EXPECT_EQ(Integer("A").GetValue(), 100);
}

TEST_F(AccessMode, limitsComeFromTheSourceWhenTheNodeHasNone)
{
    Load("<Integer Name=\"A\"><pValue>B</pValue></Integer>"
         "<Integer Name=\"B\"><Value>4</Value><pMin>Lo</pMin><pMax>Hi</pMax><pInc>Step</pInc><Unit>px</Unit>"
         "<Representation>HexNumber</Representation></Integer>" +
         Switch("Lo", 2) + Switch("Hi", 9) + Switch("Step", 2));
    EXPECT_EQ(Integer("A").GetMin(), 2);
    EXPECT_EQ(Integer("A").GetMax(), 9);
    EXPECT_EQ(Integer("A").GetInc(), 2);
    EXPECT_EQ(Integer("A").GetUnit(), "px");
    EXPECT_EQ(Integer("A").ToString(), "0x4");
    EXPECT_THROW(Integer("A").SetValue(5), GenICam::OutOfRangeException);
}

TEST_F(AccessMode, anErrorNodeThatReportsOneFailsVerifiedAccesses)
{
    Load("<Integer Name=\"A\"><pError>E</pError><Value>1</Value></Integer>" + Switch("E", 0));
    Integer("A").SetValue(2);
    Integer("E").SetValue(3);
    EXPECT_THROW(Integer("A").SetValue(4), GenICam::RuntimeException);
    EXPECT_THROW(Integer("A").GetValue(true), GenICam::RuntimeException);
    EXPECT_EQ(Integer("A").GetValue(), 4);
}

TEST_F(AccessMode, propertiesAreThoseOfTheDescription)
{
    Load("<Integer Name=\"A\" NameSpace=\"Standard\"><ToolTip>tip</ToolTip><Description>text <!-- x -->more"
         "</Description><DisplayName>Shown</DisplayName><Visibility>Guru</Visibility><DocuURL>http://x</DocuURL>"
         "<IsDeprecated>Yes</IsDeprecated><EventID>9001</EventID><pAlias>B</pAlias><pCastAlias>C</pCastAlias>"
         "<Streamable>Yes</Streamable><Value>1</Value><PollingTime>500</PollingTime><pSelected>B</pSelected>"
         "<Vendor>special</Vendor></Integer><Integer Name=\"B\"><Value>1</Value></Integer>"
         "<Float Name=\"C\"><Value>1</Value></Float>");
    auto& node = Get<INode>("A");
    EXPECT_EQ(node.GetToolTip(), "tip");
    EXPECT_EQ(node.GetDescription(), "text more");
    EXPECT_EQ(node.GetDisplayName(), "Shown");
    EXPECT_EQ(node.GetVisibility(), EVisibility::Guru);
    EXPECT_EQ(node.GetDocuURL(), "http://x");
    EXPECT_EQ(node.GetEventID(), "9001");
    EXPECT_TRUE(node.IsDeprecated());
    EXPECT_TRUE(node.IsStreamable());
    EXPECT_EQ(node.GetPollingTime(), 500);
    EXPECT_EQ(node.GetAlias(), m_map->GetNode("B"));
    EXPECT_EQ(node.GetCastAlias(), m_map->GetNode("C"));
    EXPECT_EQ(node.GetName(true), "Std::A");
    EXPECT_EQ(node.GetPrincipalInterfaceType(), EInterfaceType::Integer);
    EXPECT_EQ(node.GetNodeMap(), m_map.get());
    GenICam::gcstring value;
    EXPECT_TRUE(node.GetProperty("Vendor", value));
    EXPECT_EQ(value, "special");
    EXPECT_FALSE(node.GetProperty("Nothing", value));
    EXPECT_EQ(m_map->GetNode("Std::A"), &node);
    EXPECT_EQ(m_map->GetNode("Cust::A"), nullptr);
    EXPECT_NE(m_map->GetNode("Cust::B"), nullptr);
    EXPECT_EQ(Get<INode>("B").GetDisplayName(), "B");
    FeatureList features;
    Get<ISelector>("A").GetSelectedFeatures(features);
    EXPECT_EQ(features, FeatureList{m_map->GetNode("B")});
    Get<ISelector>("B").GetSelectingFeatures(features);
    EXPECT_EQ(features, FeatureList{&node});
    EXPECT_TRUE(Get<ISelector>("A").IsSelector());
    EXPECT_FALSE(Get<ISelector>("B").IsSelector());
}

} // namespace
} // namespace GenApi
