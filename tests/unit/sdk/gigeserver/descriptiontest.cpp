// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/registers.h"

#include "genapi/inodemap.h"
#include "gigeserver/internal/description.h"
#include "protocols/gvbsregisters.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace GigEServer;
using namespace GigEServer::Internal;
namespace Gvbs = Velmo::Gvbs;
using Velmo::Gvcp::EStatus;

namespace
{

/** The way a node map reaches the registers. */
class CPort final : public GenApi::IPort
{
public:
    explicit CPort(CRegisters& registers) : m_registers(registers) {}
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RW; }
    void Read(void* buffer, std::int64_t address, std::int64_t length) override
    {
        ASSERT_EQ(m_registers.Read(static_cast<std::uint32_t>(address), static_cast<std::uint8_t*>(buffer),
                                   static_cast<std::size_t>(length)),
                  EStatus::Success);
    }
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override
    {
        ASSERT_EQ(m_registers.Write(static_cast<std::uint32_t>(address), static_cast<const std::uint8_t*>(buffer),
                                    static_cast<std::size_t>(length)),
                  EStatus::Success);
    }

private:
    CRegisters& m_registers;
};

struct SRegistersOfACamera
{
    SServedCamera camera;
    std::shared_ptr<Simulator::CCameraModel> pModel = std::make_shared<Simulator::CCameraModel>(camera.config);
    CRegisters registers{camera, pModel,
                         CRegisters::SHooks{[] {}, [](std::uint32_t) {},
                                            [] {
                                            }}};
};

std::string UrlOf(CRegisters& registers)
{
    std::vector<std::uint8_t> field(Gvbs::UrlBytes);
    EXPECT_EQ(registers.Read(Gvbs::FirstUrl, field.data(), field.size()), EStatus::Success);
    return reinterpret_cast<const char*>(field.data());
}

} // namespace

TEST(GigECameraDescription, isReadFromWhereItsUrlSays)
{
    SRegistersOfACamera some;
    const std::string url = UrlOf(some.registers);
    unsigned int address = 0;
    unsigned int bytes = 0;
    ASSERT_EQ(std::sscanf(url.c_str(), "Local:EmuMono1280.zip;%x;%x", &address, &bytes), 2) << url;
    std::vector<std::uint8_t> zipped((bytes + 3) / 4 * 4);
    ASSERT_EQ(some.registers.Read(address, zipped.data(), zipped.size()), EStatus::Success);
    EXPECT_EQ(std::memcmp(zipped.data(), "PK", 2), 0);
    std::uint8_t beyond[4];
    EXPECT_EQ(some.registers.Read(address + static_cast<std::uint32_t>(zipped.size()), beyond, 4),
              EStatus::InvalidAddress);
    EXPECT_EQ(some.registers.Write(address, beyond, 4), EStatus::WriteProtect);
    const auto pNodeMap = GenApi::CNodeMapFactory::FromData(zipped.data(), bytes).CreateNodeMap();
    EXPECT_NE(pNodeMap->GetNode("Width"), nullptr);
    EXPECT_NE(pNodeMap->GetNode("GevSCPSPacketSize"), nullptr);
}

TEST(GigECameraDescription, featuresOfTheConnectionReachTheirBits)
{
    SRegistersOfACamera some;
    CPort port(some.registers);
    const std::string xml = AddTransportFeatures(some.pModel->GetDescription());
    const auto pNodeMap = GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap();
    pNodeMap->Connect(&port);
    const CBootstrap& bootstrap = some.registers.GetBootstrap();
    some.registers.GetBootstrap().Set(Gvbs::StreamChannelPacketSize, Gvbs::ScpsDoNotFragment | 1500);
    const GenApi::CIntegerPtr pPacketSize(pNodeMap->GetNode("GevSCPSPacketSize"));
    EXPECT_EQ(pPacketSize->GetValue(), 1500);
    pPacketSize->SetValue(8000);
    EXPECT_EQ(bootstrap.Get(Gvbs::StreamChannelPacketSize), Gvbs::ScpsDoNotFragment | 8000);
    GenApi::CBooleanPtr(pNodeMap->GetNode("GevGVSPExtendedIDMode"))->SetValue(true);
    EXPECT_EQ(bootstrap.Get(Gvbs::GvspConfiguration), Gvbs::GvspConfigurationExtendedIds);
    GenApi::CBooleanPtr(pNodeMap->GetNode("GevSCCFGExtendedChunkData"))->SetValue(true);
    EXPECT_EQ(bootstrap.Get(Gvbs::StreamChannelConfiguration), Gvbs::SccfgExtendedChunkData);
}

TEST(GigECameraDescription, brokenOnesStayBroken)
{
    SServedCamera camera;
    camera.config.faults.brokenDescription = true;
    const Simulator::CCameraModel model(camera.config);
    EXPECT_FALSE(ZipDescription(model).empty());
    const std::string xml = AddTransportFeatures(model.GetDescription());
    EXPECT_THROW(GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap(), GenICam::GenericException);
}
