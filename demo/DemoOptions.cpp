#include "demo/DemoOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <string_view>
#include <utility>

namespace tallyview::demo {
namespace {

template <class Number>
bool read(std::string_view text, Number &number) {
    const char *const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

bool read(std::string_view text, SampleJournal &journal) {
    journal = text == "wal" ? SampleJournal::wal : SampleJournal::rollback;
    return text == "wal" || text == "rollback";
}

bool read(std::string_view text, SampleRollouts &rollouts) {
    constexpr std::array<std::pair<std::string_view, SampleRollouts>, 4> names{{
        {"realistic", SampleRollouts::realistic},
        {"heavy", SampleRollouts::heavy},
        {"small", SampleRollouts::small},
        {"none", SampleRollouts::none},
    }};
    const auto *const found =
        std::ranges::find(names, text, [](const auto &name) { return name.first; });
    if (found == names.end()) {
        return false;
    }
    rollouts = found->second;
    return true;
}

bool read(std::string_view text, std::filesystem::path &path) {
    path = std::filesystem::absolute(text).lexically_normal();
    return !text.empty();
}

bool read(std::string_view text, std::chrono::milliseconds &interval) {
    std::uint32_t count = 0;
    const bool isNumber = read(text, count);
    interval = std::chrono::milliseconds(count);
    return isNumber && count > 0;
}

/// Whether `name` is an option with a value and the value is understood.
bool apply(DemoOptions &options, std::string_view name, std::string_view value) {
    SampleOptions &sample = options.sample;
    return (name == "--home" && read(value, sample.home)) ||
           (name == "--threads" && read(value, sample.threads)) ||
           (name == "--seed" && read(value, sample.seed)) ||
           (name == "--now" && read(value, sample.nowSeconds)) ||
           (name == "--journal" && read(value, sample.journal)) ||
           (name == "--rollouts" && read(value, sample.rollouts)) ||
           (name == "--live-interval" && read(value, options.liveInterval));
}

} // namespace

const char *const demoUsage =
    R"(Usage: orvik-tallyview-demo --home DIR [option...]

Writes sample data of the agent into DIR/.orvik: a database and its rollout files.

  --threads N            how many threads (2000)
  --seed S               which data; equal seeds and times give equal data (1)
  --now UNIX_SECONDS     the time that the threads' ages count from (the current time)
  --journal wal|rollback
  --rollouts realistic|heavy|small|none
                         sizes of the rollout files; heavy has more than 512 KiB for a tenth of
                         the live threads, whatever their number
  --live                 works like an agent until stopped by SIGINT or SIGTERM: on the sample
                         data that DIR holds, or on new data when it holds none
  --live-interval MS     time between two steps of --live (4000)
)";

std::expected<DemoOptions, std::string> parseDemoOptions(std::span<char *> arguments) {
    DemoOptions options;
    options.sample.nowSeconds = std::time(nullptr);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view name = arguments[i];
        if (name == "--help") {
            return std::unexpected("");
        }
        if (name == "--live") {
            options.isLive = true;
        } else if (i + 1 == arguments.size() || !apply(options, name, arguments[i + 1])) {
            return std::unexpected("cannot use " + std::string(name));
        } else {
            ++i;
        }
    }
    if (options.sample.home.empty()) {
        return std::unexpected("--home is missing");
    }
    return options;
}

} // namespace tallyview::demo
