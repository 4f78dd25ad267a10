// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "peer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace GenApi;

namespace
{

const std::vector<std::string>& IntegerFeatures()
{
    static const std::vector<std::string> names = {"SensorHeight",      "SensorWidth",     "OffsetX",
                                                   "OffsetY",           "Width",           "Height",
                                                   "BinningHorizontal", "BinningVertical", "AcquisitionFramePeriod",
                                                   "GainRaw",           "PayloadSize",     "TLParamsLocked"};
    return names;
}

std::string OwnSymbolic(CPeer& peer, const std::string& name)
{
    IEnumEntry* const entry = peer.Own<CEnumerationPtr>(name)->GetCurrentEntry();
    return entry == nullptr ? "" : entry->GetSymbolic().str();
}

std::optional<std::string> OtherSymbolic(CPeer& peer, const std::string& name)
{
    return CPeer::Ask<std::string>(
        [&](GError** error)
        {
            const char* const text = arv_gc_enumeration_get_string_value(ARV_GC_ENUMERATION(peer.Other(name)), error);
            return std::string(text == nullptr ? "" : text);
        });
}

} // namespace

TEST(ArvComparisonCamera, integerFeaturesHaveTheSameValues)
{
    CPeer peer;
    for (const std::string& name : IntegerFeatures())
    {
        EXPECT_EQ(peer.Own<CIntegerPtr>(name)->GetValue(), peer.OtherInteger(name)) << name;
    }
}

TEST(ArvComparisonCamera, integerFeaturesHaveTheSameLimits)
{
    CPeer peer;
    for (const std::string name : {"OffsetX", "OffsetY", "Width", "Height", "BinningHorizontal", "GainRaw"})
    {
        const auto min = CPeer::Ask<std::int64_t>(
            [&](GError** e) { return arv_gc_integer_get_min(ARV_GC_INTEGER(peer.Other(name)), e); });
        const auto max = CPeer::Ask<std::int64_t>(
            [&](GError** e) { return arv_gc_integer_get_max(ARV_GC_INTEGER(peer.Other(name)), e); });
        const auto inc = CPeer::Ask<std::int64_t>(
            [&](GError** e) { return arv_gc_integer_get_inc(ARV_GC_INTEGER(peer.Other(name)), e); });
        EXPECT_EQ(peer.Own<CIntegerPtr>(name)->GetMin(), min) << name;
        EXPECT_EQ(peer.Own<CIntegerPtr>(name)->GetMax(), max) << name;
        EXPECT_EQ(peer.Own<CIntegerPtr>(name)->GetInc(), inc) << name;
    }
}

TEST(ArvComparisonCamera, floatFeaturesHaveTheSameValues)
{
    CPeer peer;
    for (const std::string name : {"AcquisitionFrameRate", "ExposureTimeAbs"})
    {
        EXPECT_DOUBLE_EQ(peer.Own<CFloatPtr>(name)->GetValue(), peer.OtherFloat(name).value()) << name;
    }
}

TEST(ArvComparisonCamera, textFeaturesHaveTheSameValues)
{
    CPeer peer;
    for (const std::string name :
         {"DeviceVendorName", "DeviceModelName", "DeviceManufacturerInfo", "DeviceID", "DeviceVersion"})
    {
        EXPECT_EQ(peer.Own<CStringPtr>(name)->GetValue().str(), peer.OtherString(name)) << name;
    }
}

TEST(ArvComparisonCamera, enumerationsHaveTheSameEntry)
{
    CPeer peer;
    for (const std::string name :
         {"PixelFormat", "AcquisitionMode", "TriggerSelector", "TriggerMode", "TriggerSource", "TriggerActivation"})
    {
        EXPECT_EQ(OwnSymbolic(peer, name), OtherSymbolic(peer, name)) << name;
    }
}

TEST(ArvComparisonCamera, everyPixelFormatGivesTheSamePayloadSize)
{
    CPeer peer;
    GenICam::gcstring_vector symbolics;
    peer.Own<CEnumerationPtr>("PixelFormat")->GetSymbolics(symbolics);
    ASSERT_EQ(symbolics.size(), 7U);
    for (const GenICam::gcstring& symbolic : symbolics)
    {
        peer.Own<CEnumerationPtr>("PixelFormat")->FromString(symbolic);
        EXPECT_EQ(OtherSymbolic(peer, "PixelFormat"), symbolic.str());
        EXPECT_EQ(peer.Own<CIntegerPtr>("PayloadSize")->GetValue(), peer.OtherInteger("PayloadSize")) << symbolic;
    }
}

TEST(ArvComparisonCamera, valuesWrittenHereAreReadThere)
{
    CPeer peer;
    peer.Own<CIntegerPtr>("Width")->SetValue(320);
    peer.Own<CIntegerPtr>("BinningHorizontal")->SetValue(4);
    peer.Own<CFloatPtr>("AcquisitionFrameRate")->SetValue(12.5);
    peer.Own<CFloatPtr>("ExposureTimeAbs")->SetValue(1234.0);
    EXPECT_EQ(peer.OtherInteger("Width"), 320);
    EXPECT_EQ(peer.OtherInteger("BinningHorizontal"), 4);
    EXPECT_EQ(peer.OtherInteger("AcquisitionFramePeriod"), 80000);
    EXPECT_DOUBLE_EQ(peer.OtherFloat("AcquisitionFrameRate").value(), 12.5);
    EXPECT_DOUBLE_EQ(peer.OtherFloat("ExposureTimeAbs").value(), 1234.0);
}

TEST(ArvComparisonCamera, valuesWrittenThereAreReadHereAfterInvalidation)
{
    CPeer peer;
    ASSERT_TRUE(peer.SetOtherInteger("Height", 240));
    ASSERT_TRUE(peer.SetOtherFloat("AcquisitionFrameRate", 40.0));
    peer.Map().InvalidateNodes();
    EXPECT_EQ(peer.Own<CIntegerPtr>("Height")->GetValue(), 240);
    EXPECT_DOUBLE_EQ(peer.Own<CFloatPtr>("AcquisitionFrameRate")->GetValue(), 40.0);
}

TEST(ArvComparisonCamera, selectorChoosesTheSameRegister)
{
    CPeer peer;
    for (const char* selector : {"FrameStart", "AcquisitionStart", "FrameStart"})
    {
        peer.Own<CEnumerationPtr>("TriggerSelector")->FromString(selector);
        GError* error = nullptr;
        arv_gc_enumeration_set_string_value(ARV_GC_ENUMERATION(peer.Other("TriggerSelector")), selector, &error);
        ASSERT_EQ(error, nullptr);
        const bool isOn = std::string(selector) == "AcquisitionStart";
        peer.Own<CEnumerationPtr>("TriggerMode")->FromString(isOn ? "On" : "Off");
        EXPECT_EQ(OtherSymbolic(peer, "TriggerMode"), isOn ? "On" : "Off");
    }
}

TEST(ArvComparisonCamera, commandsWriteTheSameRegister)
{
    CPeer peer;
    peer.Own<CCommandPtr>("AcquisitionStart")->Execute();
    EXPECT_EQ(peer.Peek(0x124, 4), (std::vector<std::uint8_t>{0, 0, 0, 1}));
    peer.Own<CCommandPtr>("AcquisitionStop")->Execute();
    EXPECT_EQ(peer.Peek(0x124, 4), (std::vector<std::uint8_t>{0, 0, 0, 0}));
}

TEST(ArvComparisonCamera, structEntriesHaveTheSameValues)
{
    CPeer peer;
    for (const std::vector<std::uint8_t>& bytes : std::vector<std::vector<std::uint8_t>>{
             {0x12, 0x34, 0x56, 0x78}, {0xFF, 0xFE, 0x80, 0x01}, {0x00, 0x01, 0xFF, 0xFF}})
    {
        peer.Poke(0x1f0, bytes);
        for (const std::string name : {"StructEntry_16_31", "StructEntry_0_15", "StructEntry_15", "StructEntry_0_31"})
        {
            EXPECT_EQ(peer.Own<CIntegerPtr>(name)->GetValue(), peer.OtherInteger(name)) << name;
        }
    }
}

TEST(ArvComparisonCamera, booleanValuesOfTheirOwn)
{
    CPeer peer;
    peer.Own<CBooleanPtr>("TestBoolean")->SetValue(true);
    EXPECT_EQ(peer.OtherInteger("TestRegister"), 321);
    const auto other = CPeer::Ask<gboolean>(
        [&](GError** e) { return arv_gc_boolean_get_value(ARV_GC_BOOLEAN(peer.Other("TestBoolean")), e); });
    EXPECT_EQ(other, TRUE);
    peer.Own<CBooleanPtr>("TestBoolean")->SetValue(false);
    EXPECT_EQ(peer.OtherInteger("TestRegister"), 123);
}

TEST(ArvComparisonCamera, textRegistersTakeTheSameText)
{
    CPeer peer;
    peer.Own<CStringPtr>("TestStringReg")->SetValue("a text");
    EXPECT_EQ(peer.OtherString("TestStringReg"), "a text");
    const auto maxLength = CPeer::Ask<std::int64_t>(
        [&](GError** e) { return arv_gc_string_get_max_length(ARV_GC_STRING(peer.Other("TestStringReg")), e); });
    EXPECT_EQ(peer.Own<CStringPtr>("TestStringReg")->GetMaxLength(), maxLength);
}

TEST(ArvComparisonCamera, everyNodeOfThePeerExistsHere)
{
    CPeer peer;
    std::size_t position = 0;
    int found = 0;
    while ((position = peer.Description().find("Name=\"", position)) != std::string::npos)
    {
        position += 6;
        const std::string name = peer.Description().substr(position, peer.Description().find('"', position) - position);
        if (peer.Other(name) != nullptr)
        {
            EXPECT_NE(peer.Map().GetNode(name.c_str()), nullptr) << name;
            ++found;
        }
    }
    EXPECT_GT(found, 50);
}
