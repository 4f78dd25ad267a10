// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigecamera/faults.h"

#include "genapi/exceptions.h"

#include <algorithm>
#include <limits>

namespace GigECamera
{

using GigEServer::SNetworkFaults;
using Simulator::SFaults;

namespace
{

constexpr std::uint32_t Thousand = 1000;
constexpr std::uint32_t MostMs = 60'000;
constexpr std::uint32_t MostMtu = 0xFFFF;
constexpr std::uint32_t Most = std::numeric_limits<std::uint32_t>::max();

/** A fault with a number. */
struct SNumber
{
    const char* name;
    std::uint32_t most;
    void (*store)(SNetworkFaults&, SFaults&, std::uint32_t);
};

const std::vector<SNumber>& Numbers()
{
    static const std::vector<SNumber> numbers = {
        {"lost", Thousand,
         [](SNetworkFaults& n, SFaults&, std::uint32_t value)
         {
             n.lostPerThousand = value;
         }},
        {"reordered", Thousand,
         [](SNetworkFaults& n, SFaults&, std::uint32_t value)
         {
             n.reorderedPerThousand = value;
         }},
        {"duplicated", Thousand,
         [](SNetworkFaults& n, SFaults&, std::uint32_t value)
         {
             n.duplicatedPerThousand = value;
         }},
        {"corrupted", Thousand,
         [](SNetworkFaults& n, SFaults&, std::uint32_t value)
         {
             n.corruptedPerThousand = value;
         }},
        {"delay", MostMs,
         [](SNetworkFaults& n, SFaults&, std::uint32_t value)
         {
             n.delayMs = value;
         }},
        {"slow", MostMs,
         [](SNetworkFaults& n, SFaults&, std::uint32_t value)
         {
             n.commandMs = value;
         }},
        {"die", Most,
         [](SNetworkFaults& n, SFaults&, std::uint32_t value)
         {
             n.dieInFrame = value;
         }},
        {"mtu", MostMtu,
         [](SNetworkFaults& n, SFaults&, std::uint32_t value)
         {
             n.pathMtu = value;
         }},
        {"power-loss-file", Most,
         [](SNetworkFaults&, SFaults& c, std::uint32_t value)
         {
             c.powerLossAtFileOperation = value;
         }},
        {"power-loss-write", Most,
         [](SNetworkFaults&, SFaults& c, std::uint32_t value)
         {
             c.powerLossAtWrite = value;
         }},
        {"file-fail", Most,
         [](SNetworkFaults&, SFaults& c, std::uint32_t value)
         {
             c.fileFailure = value;
         }},
        {"file-short", Most,
         [](SNetworkFaults&, SFaults& c, std::uint32_t value)
         {
             c.fileShortWrite = value;
         }},
        {"file-slow", MostMs,
         [](SNetworkFaults&, SFaults& c, std::uint32_t value)
         {
             c.fileDelayMs = value;
         }},
    };
    return numbers;
}

std::uint32_t NumberOf(const std::string& fault, const std::string& text, std::uint32_t most)
{
    const bool isNumber = !text.empty() && text.size() <= 10 && text.find_first_not_of("0123456789") == text.npos;
    const unsigned long long value = isNumber ? std::stoull(text) : 0;
    if (!isNumber || value > most)
    {
        GENICAM_THROW(InvalidArgumentException,
                      "The fault '" + fault + "' needs a number from 0 to " + std::to_string(most) + ".");
    }
    return static_cast<std::uint32_t>(value);
}

/** Those without a number. False when there is no such fault. */
bool ReadOther(const std::string& text, const std::string& name, const std::string& value, SNetworkFaults& network,
               SFaults& camera)
{
    if (text == "silent")
    {
        network.isSilent = true;
    }
    else if (text == "nostream")
    {
        network.isStreamBlocked = true;
    }
    else if (text == "notest")
    {
        network.hasNoTestPackets = true;
    }
    else if (name == "after-reset")
    {
        const auto found = Simulator::FindAfterReset(value);
        camera.afterReset = found.value_or(camera.afterReset);
        return found.has_value();
    }
    else
    {
        return false;
    }
    return true;
}

} // namespace

std::string GetFaultHelp()
{
    return "What goes wrong, as often as needed: lost=N, reordered=N, duplicated=N, corrupted=N (stream packets per "
           "thousand), "
           "delay=MS (of images), slow=MS (of commands), die=N (silent for good in the N-th image), silent (answers "
           "nothing), mtu=N (larger datagrams vanish on the way), nostream (no stream packet arrives), notest (sends "
           "no test packets), power-loss-file=N, power-loss-write=N (in the N-th file operation, before the N-th "
           "register write), file-fail=N (the N-th file operation), file-short=N (the N-th write to a file), "
           "file-slow=MS (file operations), after-reset=same|never|twice|otherSerial (what comes back)";
}

void ReadFaults(const std::vector<std::string>& texts, SNetworkFaults& network, SFaults& camera)
{
    for (const std::string& text : texts)
    {
        const std::size_t equals = text.find('=');
        const std::string name = text.substr(0, equals);
        const std::string value = equals == std::string::npos ? "" : text.substr(equals + 1);
        const auto number = std::find_if(Numbers().begin(), Numbers().end(),
                                         [&name](const SNumber& known) { return name == known.name; });
        if (number != Numbers().end())
        {
            number->store(network, camera, NumberOf(text, value, number->most));
        }
        else if (!ReadOther(text, name, value, network, camera))
        {
            GENICAM_THROW(InvalidArgumentException, "There is no fault '" + text + "'. " + GetFaultHelp() + ".");
        }
    }
}

} // namespace GigECamera
