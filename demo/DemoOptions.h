#pragma once

#include "demo/SampleHome.h"

#include <chrono>
#include <expected>
#include <span>
#include <string>

namespace tallyview::demo {

/// What the demo program is asked to do.
struct DemoOptions {
    SampleOptions sample;
    bool isLive = false;
    std::chrono::milliseconds liveInterval{4000};
};

extern const char *const demoUsage;

/// Reads the arguments after the program's name. The failure says which one is wrong; it is
/// empty when help was asked for.
std::expected<DemoOptions, std::string> parseDemoOptions(std::span<char *> arguments);

} // namespace tallyview::demo
