// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/memoryport.h"
#include "parametercollection/parametercollection.h"
#include "parametercollection/parameterpath.h"
#include "parametercollection/parameters.h"
#include "parametercollection/vmcamera.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

namespace
{

using namespace ParameterCollection;

std::string described(const std::string& nodes)
{
    return "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"Model\" VendorName=\"Vendor\" "
           "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
           "MinorVersion=\"0\" SubMinorVersion=\"0\">" +
           nodes + "<Port Name=\"Device\"/></RegisterDescription>";
}

std::string at(int address, int length, const std::string& mode = "RW")
{
    return "<Address>" + std::to_string(address) + "</Address><Length>" + std::to_string(length) +
           "</Length><AccessMode>" + mode + "</AccessMode><pPort>Device</pPort>";
}

std::string intReg(const std::string& name, int address)
{
    return "<IntReg Name=\"" + name + "\">" + at(address, 4) + "</IntReg>";
}

std::unique_ptr<GenApi::INodeMap> load(const std::string& nodes, GenApi::CMemoryPort& port)
{
    const std::string xml = described(nodes);
    auto map = GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap("Tested");
    map->Connect(&port);
    return map;
}

constexpr int NoiseAddress = 4;
constexpr int ModeAddress = 8;
constexpr int ExtraAddress = 12;
constexpr int StartAddress = 16;
constexpr int LockAddress = 20;
constexpr int WidthAddress = 24;
constexpr int NameAddress = 32;
constexpr int NameBytes = 16;

const char* const Camera = R"(
<Float Name="Exposure"><Value>10.5</Value><Min>1</Min><Max>100</Max></Float>
<Boolean Name="Reverse"><pValue>NoiseReg</pValue><OnValue>3</OnValue><OffValue>2</OffValue></Boolean>
<Enumeration Name="Mode">
  <EnumEntry Name="Off"><Value>0</Value></EnumEntry>
  <EnumEntry Name="On"><Value>1</Value></EnumEntry>
  <EnumEntry Name="Extra"><pIsAvailable>ExtraReg</pIsAvailable><Value>2</Value></EnumEntry>
  <EnumEntry Name="Never"><pIsImplemented>Zero</pIsImplemented><Value>3</Value></EnumEntry>
  <pValue>ModeReg</pValue>
</Enumeration>
<Command Name="Start"><pValue>StartReg</pValue><CommandValue>1</CommandValue></Command>
<Integer Name="Width"><pIsLocked>LockReg</pIsLocked><pValue>WidthReg</pValue><Min>8</Min><Max>64</Max><Inc>4</Inc>
</Integer>
<Integer Name="Zero"><Value>0</Value></Integer>
<Float Name="Absent"><pIsImplemented>Zero</pIsImplemented><Value>1</Value></Float>
<Float Name="Asleep"><pIsAvailable>ExtraReg</pIsAvailable><Value>1</Value></Float>
)";

class DescribedParametersTest : public ::testing::Test
{
protected:
    DescribedParametersTest()
    {
        m_port.Poke(NoiseAddress, 2, 4);
        m_port.Poke(WidthAddress, 16, 4);
        m_port.PokeText(NameAddress, "first", NameBytes);
        const std::string text = "<StringReg Name=\"UserName\">" + at(NameAddress, NameBytes) + "</StringReg>";
        const std::string readOnly = "<IntReg Name=\"Status\">" + at(WidthAddress, 4, "RO") + "</IntReg>";
        const std::string writeOnly = "<IntReg Name=\"Key\">" + at(64, 4, "WO") + "</IntReg>";
        m_map = load(Camera + text + readOnly + writeOnly + intReg("NoiseReg", NoiseAddress) +
                         intReg("ModeReg", ModeAddress) + intReg("ExtraReg", ExtraAddress) +
                         intReg("StartReg", StartAddress) + intReg("LockReg", LockAddress) +
                         intReg("WidthReg", WidthAddress),
                     m_port);
        m_collection->announceNodeMap(ParameterPath::CameraDevice);
        m_collection->announceNodeMap(ParameterPath::StreamGrabber0);
        m_collection->attachNodeMap(ParameterPath::CameraDevice, m_map.get());
    }
    ~DescribedParametersTest() override { m_collection->detachAllNodeMaps(); }

    template <class Parameter> Parameter parameter(const char* feature) const
    {
        return Parameter(m_collection, QStringLiteral("@CameraDevice/") + QString::fromLatin1(feature));
    }

    /** Sets a register the way a user of the node map does, so that what depends on it is computed anew. */
    void set(const char* reg, std::int64_t value) { parameter<CIntegerParameter>(reg).setValue(value); }

    GenApi::CMemoryPort m_port{128};
    std::unique_ptr<GenApi::INodeMap> m_map;
    QSharedPointer<CParameterCollection> m_collection = QSharedPointer<CParameterCollection>::create(CObjectState());
};

TEST_F(DescribedParametersTest, aFloatHasItsValueAndLimits)
{
    auto exposure = parameter<CFloatParameter>("Exposure");
    EXPECT_DOUBLE_EQ(exposure.value(), 10.5);
    EXPECT_DOUBLE_EQ(exposure.minimum(), 1.0);
    EXPECT_DOUBLE_EQ(exposure.maximum(), 100.0);
    exposure.setValue(99.25);
    EXPECT_DOUBLE_EQ(exposure.value(), 99.25);
    EXPECT_TRUE(exposure.tryFromString("12.5"));
    EXPECT_DOUBLE_EQ(exposure.valueOr(0.0), 12.5);
}

TEST_F(DescribedParametersTest, aFloatOutOfRangeIsRefusedAndKeepsItsValue)
{
    auto exposure = parameter<CFloatParameter>("Exposure");
    EXPECT_THROW(exposure.setValue(100.5), GenICam::OutOfRangeException);
    EXPECT_FALSE(exposure.trySetValue(0.5));
    EXPECT_DOUBLE_EQ(exposure.value(), 10.5);
}

TEST_F(DescribedParametersTest, textThatIsNoNumberIsRefused)
{
    auto exposure = parameter<CFloatParameter>("Exposure");
    EXPECT_THROW(exposure.fromString("bright"), GenICam::GenericException);
    EXPECT_FALSE(exposure.tryFromString(""));
    EXPECT_DOUBLE_EQ(exposure.value(), 10.5);
}

TEST_F(DescribedParametersTest, aBooleanWritesTheDevicesOwnValues)
{
    auto reverse = parameter<CBooleanParameter>("Reverse");
    EXPECT_FALSE(reverse.value());
    reverse.setValue(true);
    EXPECT_EQ(m_port.Peek(NoiseAddress, 4), 3U);
    EXPECT_TRUE(reverse.valueOr(false));
    EXPECT_TRUE(reverse.trySetValue(false));
    EXPECT_EQ(m_port.Peek(NoiseAddress, 4), 2U);
    EXPECT_TRUE(reverse.tryFromString("true"));
    EXPECT_TRUE(reverse.value());
}

TEST_F(DescribedParametersTest, anEnumerationIsReadAndWrittenBySymbolicName)
{
    auto mode = parameter<CEnumParameter>("Mode");
    EXPECT_EQ(mode.value(), QStringLiteral("Off"));
    mode.setValue("On");
    EXPECT_EQ(m_port.Peek(ModeAddress, 4), 1U);
    EXPECT_EQ(mode.valueOr("?"), QStringLiteral("On"));
    EXPECT_EQ(mode.toString(), QStringLiteral("On"));
}

TEST_F(DescribedParametersTest, symbolicsAreThoseOfTheEntriesAvailableNow)
{
    const auto mode = parameter<CEnumParameter>("Mode");
    EXPECT_EQ(mode.symbolics(), (QStringList{"Off", "On"}));
    set("ExtraReg", 1);
    EXPECT_EQ(mode.symbolics(), (QStringList{"Off", "On", "Extra"}));
}

TEST_F(DescribedParametersTest, entriesThatAreNotThereAreRefused)
{
    auto mode = parameter<CEnumParameter>("Mode");
    EXPECT_THROW(mode.setValue("Extra"), GenICam::AccessException);
    EXPECT_THROW(mode.setValue("Sideways"), GenICam::InvalidArgumentException);
    EXPECT_FALSE(mode.trySetValue("Never"));
    EXPECT_EQ(mode.value(), QStringLiteral("Off"));
    set("ExtraReg", 1);
    EXPECT_TRUE(mode.trySetValue("Extra"));
}

TEST_F(DescribedParametersTest, aValueOfNoEntryThrowsOrGivesTheFallback)
{
    set("ModeReg", 77);
    const auto mode = parameter<CEnumParameter>("Mode");
    EXPECT_THROW(mode.value(), GenICam::GenericException);
    EXPECT_EQ(mode.valueOr("?"), QStringLiteral("?"));
    EXPECT_TRUE(mode.isValid());
}

TEST_F(DescribedParametersTest, aStringKeepsCharactersBeyondAscii)
{
    auto name = parameter<CStringParameter>("UserName");
    EXPECT_EQ(name.value(), QStringLiteral("first"));
    const QString umlauts = QString::fromUtf8("K\xC3\xA4mera");
    name.setValue(umlauts);
    EXPECT_EQ(name.value(), umlauts);
    EXPECT_EQ(m_port.PeekText(NameAddress, NameBytes).str(), "K\xC3\xA4mera");
}

TEST_F(DescribedParametersTest, aStringLongerThanItsRegisterIsRefused)
{
    auto name = parameter<CStringParameter>("UserName");
    EXPECT_THROW(name.setValue(QString(NameBytes + 1, 'x')), GenICam::GenericException);
    EXPECT_EQ(name.valueOr("?"), QStringLiteral("first"));
    name.setValue(QString(NameBytes, 'x'));
    EXPECT_EQ(name.value(), QString(NameBytes, 'x'));
}

TEST_F(DescribedParametersTest, aCommandIsDoneWhenTheDeviceTakesItBack)
{
    auto start = parameter<CCommandParameter>("Start");
    start.execute();
    EXPECT_EQ(m_port.Peek(StartAddress, 4), 1U);
    EXPECT_FALSE(start.isDone());
    m_port.Poke(StartAddress, 0, 4);
    EXPECT_TRUE(start.isDone());
}

TEST_F(DescribedParametersTest, everyKindIsValidAsItselfOnly)
{
    const struct
    {
        const char* feature;
        int kind;
    } features[] = {{"Width", 0}, {"Exposure", 1}, {"Reverse", 2}, {"Mode", 3}, {"UserName", 4}, {"Start", 5}};
    for (const auto& [feature, kind] : features)
    {
        const bool valid[] = {
            parameter<CIntegerParameter>(feature).isValid(), parameter<CFloatParameter>(feature).isValid(),
            parameter<CBooleanParameter>(feature).isValid(), parameter<CEnumParameter>(feature).isValid(),
            parameter<CStringParameter>(feature).isValid(),  parameter<CCommandParameter>(feature).isValid()};
        for (int asked = 0; asked < 6; ++asked)
        {
            EXPECT_EQ(valid[asked], asked == kind) << feature << " asked as kind " << asked;
        }
    }
}

TEST_F(DescribedParametersTest, usingAParameterAsAnotherKindThrowsWithItsName)
{
    try
    {
        parameter<CCommandParameter>("Width").execute();
        FAIL() << "no exception";
    }
    catch (const GenICam::AccessException& e)
    {
        EXPECT_NE(std::string(e.GetDescription()).find("@CameraDevice/Width"), std::string::npos);
    }
    EXPECT_EQ(parameter<CStringParameter>("Width").valueOr("?"), QStringLiteral("?"));
    EXPECT_FALSE(parameter<CBooleanParameter>("Mode").trySetValue(true));
}

TEST_F(DescribedParametersTest, accessModesAreThoseOfTheNode)
{
    const CParameter status = parameter<CParameter>("Status");
    EXPECT_TRUE(status.isReadable() && !status.isWritable());
    const CParameter key = parameter<CParameter>("Key");
    EXPECT_TRUE(!key.isReadable() && key.isWritable() && key.isAvailable());
    const CParameter absent = parameter<CParameter>("Absent");
    EXPECT_TRUE(absent.isValid() && !absent.isImplemented() && !absent.isAvailable());
    const CParameter asleep = parameter<CParameter>("Asleep");
    EXPECT_TRUE(asleep.isImplemented() && !asleep.isAvailable() && !asleep.isReadable());
    set("ExtraReg", 1);
    EXPECT_TRUE(asleep.isReadable());
}

TEST_F(DescribedParametersTest, writingWhatMayNotBeWrittenIsAnAccessError)
{
    EXPECT_THROW(parameter<CIntegerParameter>("Status").setValue(1), GenICam::AccessException);
    EXPECT_THROW(parameter<CIntegerParameter>("Key").value(), GenICam::AccessException);
    auto width = parameter<CIntegerParameter>("Width");
    set("LockReg", 1);
    EXPECT_FALSE(width.isWritable());
    EXPECT_FALSE(width.trySetValue(32));
    set("LockReg", 0);
    EXPECT_TRUE(width.trySetValue(32));
}

TEST_F(DescribedParametersTest, anIntegerHoldsToItsLimitsAndItsIncrement)
{
    auto width = parameter<CIntegerParameter>("Width");
    EXPECT_EQ(width.minimum(), 8);
    EXPECT_EQ(width.maximum(), 64);
    EXPECT_EQ(width.increment(), 4);
    EXPECT_THROW(width.setValue(4), GenICam::OutOfRangeException);
    EXPECT_THROW(width.setValue(68), GenICam::OutOfRangeException);
    EXPECT_THROW(width.setValue(13), GenICam::OutOfRangeException);
    EXPECT_EQ(width.value(), 16);
}

TEST_F(DescribedParametersTest, aDetachedNodeMapLeavesNoParameterBehind)
{
    auto exposure = parameter<CFloatParameter>("Exposure");
    auto start = parameter<CCommandParameter>("Start");
    m_collection->detachNodeMap(ParameterPath::CameraDevice);
    m_map.reset();
    EXPECT_FALSE(exposure.isValid() || exposure.isImplemented() || exposure.isReadable() || exposure.isWritable());
    EXPECT_DOUBLE_EQ(exposure.valueOr(1.25), 1.25);
    EXPECT_FALSE(exposure.trySetValue(5.0));
    EXPECT_FALSE(exposure.tryFromString("5"));
    EXPECT_THROW(exposure.toString(), GenICam::AccessException);
    EXPECT_THROW(start.execute(), GenICam::AccessException);
}

TEST_F(DescribedParametersTest, aPortThatIsGoneMakesItsFeaturesUnavailable)
{
    m_map->Disconnect(&m_port);
    const auto width = parameter<CIntegerParameter>("Width");
    EXPECT_TRUE(width.isValid());
    EXPECT_FALSE(width.isAvailable());
    EXPECT_EQ(width.valueOr(3), 3);
}

TEST_F(DescribedParametersTest, bareNamesAreFoundInTheFirstAnnouncedNodeMapThatHasThem)
{
    GenApi::CMemoryPort streamPort(8);
    const auto stream = load("<Integer Name=\"Width\"><Value>1</Value></Integer>"
                             "<Integer Name=\"OnlyHere\"><Value>2</Value></Integer>",
                             streamPort);
    m_collection->attachNodeMap(ParameterPath::StreamGrabber0, stream.get());
    const CIntegerParameter bare(m_collection, "Width");
    EXPECT_EQ(bare.value(), 16);
    EXPECT_EQ(CIntegerParameter(m_collection, "@StreamGrabber0/Width").value(), 1);
    EXPECT_EQ(CIntegerParameter(m_collection, "OnlyHere").value(), 2);
    EXPECT_FALSE(CIntegerParameter(m_collection, "@CameraDevice/OnlyHere").isValid());
    m_collection->detachNodeMap(ParameterPath::CameraDevice);
    EXPECT_EQ(bare.value(), 1) << "the first that is attached";
    m_collection->detachAllNodeMaps();
}

TEST(DescribedCameraSet, reachesItsParametersByTheirStandardNames)
{
    GenApi::CMemoryPort port(8);
    const auto map = load("<Integer Name=\"ActionDeviceKey\"><Value>5</Value></Integer>"
                          "<Float Name=\"ExposureTime\"><Value>20</Value><Min>1</Min><Max>50</Max></Float>"
                          "<Boolean Name=\"PtpEnable\"><Value>1</Value></Boolean>"
                          "<Integer Name=\"GevIEEE1588\"><Value>1</Value></Integer>",
                          port);
    const auto collection = QSharedPointer<CParameterCollection>::create(CObjectState());
    collection->announceNodeMap(ParameterPath::CameraDevice);
    collection->attachNodeMap(ParameterPath::CameraDevice, map.get());
    const VMCamera camera(collection);
    EXPECT_TRUE(camera.ActionDeviceKey.isAvailable());
    EXPECT_DOUBLE_EQ(camera.ExposureTime.maximum(), 50.0);
    EXPECT_TRUE(camera.PtpEnable.value());
    EXPECT_FALSE(camera.GevIEEE1588.isValid()) << "of another kind than the standard's";
    EXPECT_FALSE(camera.ActionGroupMask.isAvailable());
    collection->detachAllNodeMaps();
}

TEST_F(DescribedParametersTest, readersOnOtherThreadsSeeAValueOrTheFallbackWhileTheDeviceComesAndGoes)
{
    std::atomic<bool> stop{false};
    std::atomic<int> strange{0};
    std::atomic<int> reads{0};
    const auto width = parameter<CIntegerParameter>("Width");
    const auto readerLoop = [&]
    {
        while (!stop)
        {
            const std::int64_t value = width.valueOr(-1);
            strange += value != 16 && value != -1 ? 1 : 0;
            ++reads;
        }
    };
    std::thread first(readerLoop);
    std::thread second(readerLoop);
    for (int i = 0; i < 50 || reads < 50; ++i)
    {
        m_collection->detachNodeMap(ParameterPath::CameraDevice);
        m_collection->attachNodeMap(ParameterPath::CameraDevice, m_map.get());
        std::this_thread::yield();
    }
    stop = true;
    first.join();
    second.join();
    EXPECT_EQ(strange, 0);
}

} // namespace
