// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "registeraccess.h"

#include "protocols/gvbsregisters.h"
#include "support/figures.h"
#include "transports/gige/internal/deviceport.h"

#include <functional>
#include <stdexcept>
#include <vector>

namespace Benchmarks
{

namespace
{

using namespace Velmo::GigE::Internal;
namespace Gvbs = Velmo::Gvbs;

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t Address = Gvbs::StreamChannelPacketSize;
constexpr std::uint32_t Value = 1500;

/** The ways in turn, so that none has the quieter machine. */
std::vector<double> mediansOf(const std::vector<std::function<void()>>& ways)
{
    constexpr int repetitions = 2000;
    std::vector<std::vector<double>> took(ways.size());
    for (int i = 0; i < repetitions; ++i)
    {
        for (std::size_t way = 0; way < ways.size(); ++way)
        {
            const double start = nowMicroseconds();
            ways[way]();
            took[way].push_back(nowMicroseconds() - start);
        }
    }
    std::vector<double> medians;
    for (const std::vector<double>& times : took)
    {
        medians.push_back(median(times));
    }
    return medians;
}

} // namespace

SAccessFigures measureRegisterAccess()
{
    const ObjectPtr<GInetAddress> pAddress(g_inet_address_new_from_string("127.0.0.1"));
    CEngineError error;
    const ObjectPtr<ArvDevice> pDevice(arv_gv_device_new(pAddress.get(), pAddress.get(), error.Receive()));
    if (pDevice == nullptr || error.IsSet())
    {
        throw std::runtime_error("the camera cannot be opened: " + error.Text());
    }
    const auto pRemoval = std::make_shared<CRemoval>();
    CEngineCalls calls("camera", pRemoval);
    CDevicePort port({"camera", Loopback, Loopback, pDevice.get(), &calls, pRemoval});
    const std::vector<double> medians =
        mediansOf({[&] { keep(port.ReadRegister(Address)); }, [&] { port.WriteRegister(Address, Value); },
                   [&]
                   {
                       guint32 value = 0;
                       arv_device_read_register(pDevice.get(), Address, &value, nullptr);
                       keep(value);
                   },
                   [&]
                   {
                       arv_device_write_register(pDevice.get(), Address, Value, nullptr);
                   }});
    return {medians[0], medians[1], medians[2], medians[3]};
}

} // namespace Benchmarks
