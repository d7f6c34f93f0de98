#pragma once

#include <string>

// The pages of the device about its cartridge, with the texts that the monitor reads from them.
namespace supply_pages {

inline constexpr char kConfigurationPath[] = "/DevMgmt/ConsumableConfigDyn.xml";
inline constexpr char kUsagePath[] = "/DevMgmt/ProductUsageDyn.xml";

// An empty serial number reads as none.
inline std::string configuration(const std::string& serial, const std::string& product) {
    return "<?xml version=\"1.0\"?><ccdyn:ConsumableConfigDyn xmlns:ccdyn=\"c\" xmlns:dd=\"d\">"
           "<ccdyn:ConsumableInfo><dd:ProductNumber>" +
           product + "</dd:ProductNumber><dd:SerialNumber>" + serial +
           "</dd:SerialNumber></ccdyn:ConsumableInfo></ccdyn:ConsumableConfigDyn>";
}

inline std::string usage(const std::string& pages) {
    return "<?xml version=\"1.0\"?><pudyn:ProductUsageDyn xmlns:pudyn=\"p\" xmlns:dd=\"d\">"
           "<pudyn:ConsumableSubunit><pudyn:Consumable><dd:EstimatedPagesRemaining>" +
           pages +
           "</dd:EstimatedPagesRemaining></pudyn:Consumable></pudyn:ConsumableSubunit>"
           "</pudyn:ProductUsageDyn>";
}

}  // namespace supply_pages
