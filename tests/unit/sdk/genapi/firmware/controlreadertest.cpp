// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "firmwarefixture.h"

#include "genapi/internal/firmwarecontrolreader.h"

#include <gmock/gmock.h>

using GenApi::Internal::ReadFirmwareControl;
using GenApi::Internal::SFirmwareLimits;
using ::testing::AllOf;
using ::testing::HasSubstr;

namespace
{

std::string Refusal(const std::string& xml, const SFirmwareLimits& limits = {})
{
    try
    {
        ReadFirmwareControl("control.xml", xml, limits);
    }
    catch (const GenICam::GenericException& e)
    {
        return std::string(e.GetKind()) + ": " + e.GetDescription();
    }
    return {};
}

std::string RefusalOfSteps(const std::string& steps)
{
    SControlParts parts = GoodParts();
    parts.steps = steps;
    return Refusal(ControlXml(parts));
}

std::string RefusalOfUpdates(const std::string& updates)
{
    SControlParts parts = GoodParts();
    parts.updates = updates;
    return Refusal(ControlXml(parts));
}

/** An update of these children, whose required ones come along. */
std::string Update(const std::string& more, const std::string& id = "u")
{
    return "<Update id=\"" + id + "\" procedure=\"main\"><Condition feature=\"A\" matches=\".*\"/>" +
           "<Info key=\"Version\"><Text>1.0</Text></Info>" + more + "</Update>";
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos);
    return text.replace(at, from.size(), to);
}

} // namespace

TEST(FirmwareControl, theGoodOneIsRead)
{
    const auto control = ReadFirmwareControl("control.xml", ControlXml(GoodParts()), {});
    ASSERT_EQ(control.updates.size(), 1U);
    EXPECT_EQ(control.updates[0].id, "testcam-2.1.0");
    EXPECT_EQ(control.procedures.at("main")->steps.size(), 5U);
    EXPECT_EQ(control.procedures.at("main")->preconditions.size(), 1U);
}

TEST(FirmwareControl, whatIsNoXmlOrAnotherDocumentIsRefused)
{
    const std::string good = ControlXml(GoodParts());
    EXPECT_THAT(Refusal(""), HasSubstr("no well-formed XML"));
    EXPECT_THAT(Refusal("<FirmwarePackage>"), HasSubstr("no well-formed XML"));
    EXPECT_THAT(Refusal("<Other/>"), HasSubstr("is not <FirmwarePackage>"));
    EXPECT_THAT(Refusal(good + "<Other/>"), HasSubstr("is not <FirmwarePackage>"));
    EXPECT_THAT(Refusal(Replaced(good, "?>\n", "?><!DOCTYPE x [<!ENTITY e \"e\">]>\n")), HasSubstr("document type"));
    EXPECT_THAT(Refusal(Replaced(good, "urn:camerapool:firmwarepackage", "urn:other")),
                HasSubstr("the namespace is not"));
    EXPECT_THAT(Refusal(Replaced(good, "version=\"1.0\">", "version=\"2.0\">")),
                HasSubstr("the version '2.0' of the format is not supported"));
    EXPECT_THAT(Refusal(Replaced(good, "<Text>Better",
                                 "<Text>\xFF"
                                 "Better")),
                HasSubstr("no UTF-8 text"));
    EXPECT_THAT(Refusal(Replaced(good, "<Text>Better", "<Text>\xED\xA0\x80")), HasSubstr("no UTF-8 text"));
    EXPECT_EQ(Refusal(Replaced(good, "<Text>Better", "<Text>\xF0\x9F\x93\xB7 \xE3\x82\xAB\xC3\xA9")), "");
}

TEST(FirmwareControl, faultsNameLineAndElement)
{
    EXPECT_THAT(
        RefusalOfSteps("\n\n<Explode/>"),
        HasSubstr("FormatException: control.xml, line 12, <Explode>: this element is not known inside <Steps>"));
}

TEST(FirmwareControl, unknownStepsAttributesAndTextsAreRefused)
{
    EXPECT_THAT(RefusalOfSteps("<FirmwareWipe feature=\"A\"/>"),
                HasSubstr("<FirmwareWipe>: this element is not known"));
    EXPECT_THAT(RefusalOfSteps("<FeatureWrite feature=\"A\" value=\"1\" force=\"true\"/>"),
                HasSubstr("the attribute 'force' is not known here"));
    EXPECT_THAT(RefusalOfSteps("<FeatureWrite feature=\"A\" value=\"1\" value=\"2\"/>"), HasSubstr("given twice"));
    EXPECT_THAT(RefusalOfSteps("<FeatureWrite feature=\"A\" value=\"1\"/>stray"),
                HasSubstr("text between the elements"));
    EXPECT_THAT(RefusalOfSteps(""), HasSubstr("the procedure 'main' has no steps"));
}

TEST(FirmwareControl, stepsWithoutWhatTheyNeedAreRefused)
{
    EXPECT_THAT(RefusalOfSteps("<FeatureWrite value=\"1\"/>"), HasSubstr("the attribute 'feature' is missing"));
    EXPECT_THAT(RefusalOfSteps("<FeatureWrite feature=\"\" value=\"1\"/>"), HasSubstr("'feature' is empty"));
    EXPECT_THAT(RefusalOfSteps("<FeatureWrite feature=\" A\" value=\"1\"/>"), HasSubstr("has spaces around it"));
    EXPECT_THAT(RefusalOfSteps("<FeatureWrite feature=\"A\"/>"), HasSubstr("the attribute 'value' is missing"));
    EXPECT_THAT(RefusalOfSteps("<FeatureAssert feature=\"A\"/>"), HasSubstr("exactly one of"));
    EXPECT_THAT(RefusalOfSteps("<FeatureAssert feature=\"A\" equals=\"1\" min=\"1\"/>"), HasSubstr("exactly one of"));
    EXPECT_THAT(RefusalOfSteps("<FeatureAssert feature=\"A\" min=\"2\" max=\"1\"/>"),
                HasSubstr("'min' is above 'max'"));
    EXPECT_THAT(RefusalOfSteps("<FeatureAssert feature=\"A\" min=\"two\"/>"), HasSubstr("'min' is no number"));
    EXPECT_THAT(RefusalOfSteps("<FeatureAssert feature=\"A\" min=\"nan\"/>"), HasSubstr("'min' is no number"));
    EXPECT_THAT(RefusalOfSteps("<FileUpload file=\"other.bin\" deviceFile=\"A\"/>"),
                HasSubstr("the file 'other.bin' of a <FileUpload> is not listed"));
    EXPECT_THAT(RefusalOfSteps("<FileUpload file=\"main.bin\" deviceFile=\"A\" verify=\"hope\"/>"),
                HasSubstr("'verify' is none of"));
    EXPECT_THAT(RefusalOfSteps("<FileUpload file=\"main.bin\" deviceFile=\"A\" verify=\"crc32\"/>"),
                HasSubstr("need each other"));
    EXPECT_THAT(RefusalOfSteps("<FileUpload file=\"main.bin\" deviceFile=\"A\" crcFeature=\"C\"/>"),
                HasSubstr("need each other"));
    EXPECT_THAT(RefusalOfSteps("<FeatureExecute feature=\"A\" activates=\"yes\"/>"), HasSubstr("neither 'true' nor"));
    EXPECT_THAT(RefusalOfSteps("<FeatureExecute feature=\"A\" afterReset=\"true\"/>"),
                HasSubstr("no <DeviceReset> comes before"));
}

TEST(FirmwareControl, preconditionsHaveNoTimeAndActivateNothing)
{
    SControlParts parts = GoodParts();
    for (const char* const attribute : {"activates=\"true\"", "estimatedTimeMs=\"5\"", "afterReset=\"true\""})
    {
        parts.preconditions = std::string("<FeatureAssert feature=\"A\" equals=\"1\" ") + attribute + "/>";
        const std::string name = std::string(attribute).substr(0, std::string(attribute).find('='));
        EXPECT_THAT(Refusal(ControlXml(parts)), AllOf(HasSubstr("FormatException"), HasSubstr("'" + name + "'")));
    }
    parts.preconditions = "<FeatureAssert feature=\"A\" equals=\"1\" timeoutMs=\"5\" pollMs=\"20\"/>";
    EXPECT_EQ(Refusal(ControlXml(parts)), "");
}

TEST(FirmwareControl, timesOfNoSenseAreRefused)
{
    for (const std::string time : {"-1", "1.5", "", "1e3", "99999999999999999999999", "86400001", " 5"})
    {
        EXPECT_THAT(RefusalOfSteps("<DeviceReset waitTimeMs=\"" + time + "\"/>"), HasSubstr("'waitTimeMs'")) << time;
    }
    EXPECT_EQ(RefusalOfSteps("<DeviceReset waitTimeMs=\"86400000\"/>"), "");
}

TEST(FirmwareControl, expressionsThatDoNotCompileAreRefused)
{
    EXPECT_THAT(RefusalOfUpdates(Update("<Condition feature=\"A\" matches=\"(a\"/>")),
                AllOf(HasSubstr("<Condition>"), HasSubstr("'(a' is not valid")));
    EXPECT_THAT(RefusalOfUpdates(Update("<Condition feature=\"A\" matches=\"(a)\\1\"/>")), HasSubstr("is not valid"));
    EXPECT_THAT(RefusalOfUpdates(Update("<Condition feature=\"A\" matches=\"((a{1,999}){1,999}){1,999}\"/>")),
                HasSubstr("is not valid"));
    EXPECT_THAT(RefusalOfUpdates(Update("<Condition feature=\"A\" matches=\"" + std::string(1001, 'a') + "\"/>")),
                HasSubstr("longer than 1000 bytes"));
    EXPECT_THAT(RefusalOfSteps("<FeatureAssert feature=\"A\" matches=\"*\"/>"), HasSubstr("is not valid"));
}

TEST(FirmwareControl, aVersionPatternHasOneGroup)
{
    EXPECT_THAT(RefusalOfUpdates(Update("<DeviceVersion pattern=\"[0-9.]+\"/>")), HasSubstr("exactly one group"));
    EXPECT_THAT(RefusalOfUpdates(Update("<DeviceVersion pattern=\"([0-9]+)[.]([0-9]+)\"/>")),
                HasSubstr("exactly one group"));
    EXPECT_EQ(RefusalOfUpdates(Update("<DeviceVersion pattern=\"v(?:[0-9]+)[.]([0-9]+)\"/>")), "");
    EXPECT_THAT(RefusalOfUpdates(Update("<DeviceVersion pattern=\"(a)\"/><DeviceVersion pattern=\"(b)\"/>")),
                HasSubstr("more than one inside <Update>"));
}

TEST(FirmwareControl, versionsMayHaveAnyFormInOneLine)
{
    const auto withVersion = [](const std::string& version)
    {
        return RefusalOfUpdates("<Update id=\"u\" procedure=\"main\"><Condition feature=\"A\" matches=\".*\"/>"
                                "<Info key=\"Version\"><Text>" +
                                version + "</Text></Info></Update>");
    };
    for (const std::string version : {"7", "1.2.3.4.5", "R2b (beta)", "99999999999.1", "v1.0-\xCE\xB2"})
    {
        EXPECT_EQ(withVersion(version), "") << version;
    }
    EXPECT_THAT(withVersion("  "), HasSubstr("the text is empty"));
    EXPECT_THAT(withVersion("1\n2"), HasSubstr("a version is one line"));
    EXPECT_THAT(withVersion(std::string(201, '1')), HasSubstr("a version is one line of at most 200 bytes"));
}

TEST(FirmwareControl, updatesWithoutConditionVersionOrProcedureAreRefused)
{
    EXPECT_THAT(RefusalOfUpdates(""), HasSubstr("the package holds no update"));
    EXPECT_THAT(
        RefusalOfUpdates("<Update id=\"u\" procedure=\"main\"><Info key=\"Version\"><Text>1</Text></Info></Update>"),
        HasSubstr("would fit every camera"));
    EXPECT_THAT(
        RefusalOfUpdates("<Update id=\"u\" procedure=\"main\"><Condition feature=\"A\" matches=\"\"/></Update>"),
        HasSubstr("'Version' is missing"));
    EXPECT_THAT(RefusalOfUpdates("<Update id=\"u\" procedure=\"none\"/>"), HasSubstr("there is no procedure 'none'"));
    EXPECT_THAT(RefusalOfUpdates(Update("") + Update("")), HasSubstr("more than one update 'u'"));
    EXPECT_THAT(RefusalOfUpdates(Update("<Info key=\"Version\"><Text>2</Text></Info>")), HasSubstr("given twice"));
}

TEST(FirmwareControl, textsAreOncePerLanguage)
{
    const auto withTexts = [](const std::string& texts)
    {
        return RefusalOfUpdates(Update("<Info key=\"K\">" + texts + "</Info>"));
    };
    EXPECT_EQ(withTexts("<Text language=\"de\">a</Text><Text language=\"ja\">b</Text>"), "");
    EXPECT_THAT(withTexts(""), HasSubstr("there is no <Text>"));
    EXPECT_THAT(withTexts("<Text>a</Text><Text>b</Text>"), HasSubstr("more than one text without a language"));
    EXPECT_THAT(withTexts("<Text language=\"de\">a</Text><Text language=\"de\">b</Text>"),
                HasSubstr("more than one text in the language 'de'"));
    EXPECT_THAT(withTexts("<Text language=\"German\">a</Text>"), HasSubstr("no two-letter code"));
    EXPECT_THAT(withTexts("<Text><b>a</b></Text>"), HasSubstr("<b>: this element is not known inside <Text>"));
    EXPECT_THAT(withTexts("<Text>" + std::string(65537, 'a') + "</Text>"), HasSubstr("longer than 65536 bytes"));
}

TEST(FirmwareControl, filesAreListedOnceAndRight)
{
    const auto withFiles = [](const std::string& files)
    {
        SControlParts parts = GoodParts();
        parts.files = files;
        return Refusal(ControlXml(parts));
    };
    const std::string file = FileElement(MainFile, "x");
    EXPECT_THAT(withFiles(file + file), HasSubstr("listed twice"));
    EXPECT_THAT(withFiles(file + FileElement("control.xml", "")), HasSubstr("the control file itself"));
    EXPECT_THAT(withFiles(FileElement("../main.bin", "x")), HasSubstr("may name a file elsewhere"));
    EXPECT_THAT(withFiles("<File name=\"main.bin\" size=\"1\" sha256=\"12\"/>"),
                HasSubstr("64 lower case hexadecimal"));
    EXPECT_THAT(withFiles("<File name=\"main.bin\" size=\"1\"/>"), HasSubstr("'sha256' is missing"));
    EXPECT_THAT(withFiles("<File name=\"main.bin\" sha256=\"12\"/>"), HasSubstr("'size' is missing"));
    EXPECT_THAT(
        withFiles("<File name=\"main.bin\" size=\"18446744073709551615\" sha256=\"" + std::string(64, '0') + "\"/>"),
        HasSubstr("bytes in all files together"));
}

TEST(FirmwareControl, countsBeyondTheLimitsAreOutOfRange)
{
    SFirmwareLimits limits;
    limits.steps = 4;
    EXPECT_THAT(Refusal(ControlXml(GoodParts()), limits),
                HasSubstr("OutOfRangeException: control.xml, line 9, <Steps>"));
    limits = {};
    limits.updates = 1;
    SControlParts parts = GoodParts();
    parts.updates = Update("", "a") + Update("", "b");
    EXPECT_THAT(Refusal(ControlXml(parts), limits), HasSubstr("more than 1 updates"));
    limits = {};
    limits.conditions = 1;
    parts.updates = Update("<Condition feature=\"B\" matches=\"b\"/>");
    EXPECT_THAT(Refusal(ControlXml(parts), limits), HasSubstr("more than 1 conditions"));
    limits = {};
    limits.infos = 1;
    parts.updates = Update("<Info key=\"K\"><Text>k</Text></Info>");
    EXPECT_THAT(Refusal(ControlXml(parts), limits), HasSubstr("more than 1 information items"));
    limits = {};
    limits.files = 0;
    EXPECT_THAT(Refusal(ControlXml(GoodParts()), limits), HasSubstr("more than 0 files"));
    limits = {};
    limits.procedures = 0;
    EXPECT_THAT(Refusal(ControlXml(GoodParts()), limits), HasSubstr("more than 0 procedures"));
}

TEST(FirmwareControl, deepNestingIsRefusedWithoutHarm)
{
    std::string deep;
    for (int i = 0; i < 100000; ++i)
    {
        deep += "<Steps>";
    }
    EXPECT_NE(Refusal(deep), "");
    std::string closed = deep;
    for (int i = 0; i < 100000; ++i)
    {
        closed += "</Steps>";
    }
    EXPECT_THAT(RefusalOfSteps(closed), HasSubstr("<Steps>: this element is not known inside <Steps>"));
}
