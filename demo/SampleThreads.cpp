#include "demo/SampleThreads.h"

#include "demo/Rollout.h"
#include "demo/SampleTexts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tallyview::demo {
namespace {

using namespace std::string_view_literals;

constexpr std::int64_t second = 1000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

constexpr std::array sources{"cli"sv,  "cli"sv,    "cli"sv, "cli"sv, "vscode"sv,      "vscode"sv,
                             "exec"sv, "vscode"sv, "ci"sv,  "web"sv, "  Desktop \n"sv};
constexpr std::array models{"orvik-large-2"sv, "orvik-large-2"sv, "orvik-mini-2"sv,
                            "orvik-large-1"sv};
constexpr std::array efforts{"low"sv, "medium"sv, "medium"sv, "high"sv};
constexpr std::array branches{"main"sv,
                              "main"sv,
                              "feature/import"sv,
                              "fix/retry"sv,
                              "release/3.4"sv,
                              "功能/导出"sv,
                              "wip"sv,
                              "feature/a-rather-long-branch-name-for-one-small-change"sv};
constexpr std::array roles{"reviewer"sv, "explorer"sv, "tester"sv, "planner"sv};
constexpr std::array policies{"read-only"sv, "workspace-write"sv, "full-access"sv};
constexpr std::array approvals{"never"sv, "on-request"sv, "on-failure"sv};
constexpr std::array versions{"0.41.2"sv, "0.42.0"sv, "0.42.1"sv};

/// One of the words, or NULL for a few threads in a thousand.
template <class Choices>
std::optional<std::string> some(SampleRandom &random, const Choices &choices, unsigned nulls) {
    const std::string word(random.pick(std::span(choices)));
    return random.chance(nulls) ? std::nullopt : std::optional(word);
}

std::size_t runningThreads(std::size_t threads) {
    return std::min((threads + 2) / 3, 8 + threads / 150);
}

std::int64_t runningAge(SampleRandom &random) {
    const std::uint64_t share = random.below(1000);
    if (share < 650) {
        return random.skewed(2 * second, 15 * minute);
    }
    return share < 850 ? random.between(15 * minute, 3 * hour) : random.skewed(3 * hour, 20 * day);
}

/// The index rather than chance spreads the ages, so that small homes too have some of each.
std::int64_t idleAge(SampleRandom &random, std::size_t index) {
    const std::size_t share = index * 618'034 % 1'000'000 / 1000;
    if (share < 50) {
        return random.skewed(minute, hour);
    }
    if (share < 150) {
        return random.between(hour, 12 * hour);
    }
    return share < 450 ? random.between(12 * hour, 7 * day) : random.skewed(7 * day, 400 * day);
}

void setTimes(SampleRow &row, std::int64_t created, std::int64_t updated) {
    row.createdAt = created / second;
    row.createdAtMs = created;
    touch(row, updated);
}

/// Keeps of a full set of times only what some older or newer agent would have recorded.
void thinTimes(SampleRandom &random, SampleRow &row) {
    const std::uint64_t share = random.below(1000);
    if (share < 500) {
        return;
    }
    row.recencyAt = random.chance(500) ? std::optional<std::int64_t>(0) : std::nullopt;
    row.recencyAtMs = row.recencyAt;
    if (share < 700) {
        row.createdAtMs = row.updatedAtMs = std::nullopt; // seconds only
    } else if (share < 850) {
        row.createdAt = std::exchange(row.createdAtMs, std::nullopt); // milliseconds, wrong column
        row.updatedAt = std::exchange(row.updatedAtMs, std::nullopt);
    } else if (share < 920) {
        row.createdAt = row.updatedAt = 0; // milliseconds only
    } else if (share >= 992) {
        row.createdAt = row.createdAtMs = row.updatedAtMs = std::nullopt; // not recorded
        row.updatedAt = -1;
    }
}

void makeSubagent(SampleRandom &random, SampleRow &row) {
    const std::string role(random.pick(std::span(roles)));
    switch (random.below(3)) {
    case 0:
        row.agentRole = role;
        break;
    case 1:
        row.agentPath = "/root/" + role;
        break;
    default:
        row.source = R"( {"subagent":{"parent":")" + sampleHex(random, 12) + R"(","depth":1}})";
    }
}

void makeTricky(SampleRow &row, std::size_t number) {
    const TrickyText &text = trickyTexts()[number % trickyTexts().size()];
    row.title = text.title;
    row.preview = text.preview;
    if (number % 7 == 3) {
        row.source = "a source whose name is far too long for a label";
    }
}

SampleEnding idleEnding(SampleRandom &random, bool isArchived) {
    constexpr std::array<std::pair<unsigned, SampleEnding>, 6> shares{{
        {40, SampleEnding::undecided},
        {60, SampleEnding::emptyFile},
        {90, SampleEnding::missingFile},
        {120, SampleEnding::noPath},
        {180, SampleEnding::aborted},
        {250, SampleEnding::running},
    }};
    const std::uint64_t share = random.below(1000);
    for (const auto &[bound, ending] : shares) {
        if (share < bound) {
            return ending == SampleEnding::running && !isArchived ? SampleEnding::completed
                                                                  : ending;
        }
    }
    return SampleEnding::completed;
}

/// The last threads visit every project, so that even a small home has all of them.
const SampleProject &project(const SampleSetting &setting, std::size_t index,
                             SampleRandom &random) {
    const SampleProject &choice = weightedProject(random);
    const std::size_t fromEnd = setting.threads - 1 - index;
    return fromEnd < sampleProjects().size() ? sampleProjects()[fromEnd] : choice;
}

std::size_t rolloutBytes(SampleRandom &random, std::size_t threads, SampleRollouts rollouts) {
    if (rollouts == SampleRollouts::small) {
        return 0;
    }
    if (rollouts == SampleRollouts::heavy && random.chance(120)) {
        // Just above 512 KiB, which is as much as a reader looks at: 20,000 threads fit in 2 GB.
        return static_cast<std::size_t>(random.between(540'000, 640'000));
    }
    // Large files stay rare enough for a large home to fit on a disk.
    const std::size_t huge = std::min<std::size_t>(10, 30'000 / threads);
    const std::size_t large = std::min<std::size_t>(50, 500'000 / threads);
    const std::uint64_t share = random.below(1000);
    if (share < huge) {
        return static_cast<std::size_t>(random.skewed(1'000'000, 6'000'000));
    }
    return static_cast<std::size_t>(share < huge + large ? random.skewed(100'000, 700'000)
                                                         : random.skewed(1'000, 40'000));
}

void writeTasks(Rollout &rollout, SampleRandom &random, SampleEnding ending, std::string message,
                SampleLanguage language, std::size_t bytes) {
    const std::int64_t tasks = bytes < 4'000 ? 1 : random.skewed(1, 12);
    for (std::int64_t task = 1;; ++task) {
        rollout.startTask(message);
        rollout.work(bytes / static_cast<std::size_t>(tasks));
        const bool isLast = task == tasks;
        if (isLast && ending == SampleEnding::running) {
            return;
        }
        if (isLast ? ending == SampleEnding::aborted : random.chance(80)) {
            rollout.abortTask();
        } else {
            rollout.completeTask();
        }
        if (isLast) {
            return;
        }
        message = samplePreview(random, language);
    }
}

} // namespace

void touch(SampleRow &row, std::int64_t unixMilliseconds) {
    row.updatedAt = row.recencyAt = unixMilliseconds / second;
    row.updatedAtMs = row.recencyAtMs = unixMilliseconds;
}

const SampleProject &weightedProject(SampleRandom &random) {
    const std::span<const SampleProject> projects = sampleProjects();
    unsigned total = 0;
    for (const SampleProject &each : projects) {
        total += each.weight;
    }
    std::uint64_t rest = random.below(total);
    std::size_t index = 0;
    while (rest >= projects[index].weight) {
        rest -= projects[index++].weight;
    }
    return projects[index];
}

SampleRow newThread(SampleRandom &random, const SampleProject &project,
                    const std::filesystem::path &home, std::int64_t unixMilliseconds) {
    const SampleLanguage language = random.chance(project.isChinese ? 850 : 200)
                                        ? SampleLanguage::chinese
                                        : SampleLanguage::english;
    SampleRow row;
    row.id = sampleId(random, unixMilliseconds);
    row.title = sampleTitle(random, language);
    row.preview = samplePreview(random, language);
    row.firstUserMessage = row.preview;
    if (project.path) {
        row.cwd = project.path->empty() ? home.string() : std::string(*project.path);
    }
    row.source = some(random, sources, 30);
    row.model = some(random, models, 30);
    row.reasoningEffort = some(random, efforts, 100);
    row.gitBranch = some(random, branches, 120);
    row.gitCommit = sampleHex(random, 40);
    row.sandboxPolicy = some(random, policies, 0);
    row.approvalMode = some(random, approvals, 0);
    row.cliVersion = some(random, versions, 0);
    row.tokensUsed = random.skewed(300, 4'000'000);
    row.turnCount = random.skewed(1, 60);
    row.archived = 0;
    row.rolloutPath = (home / ".orvik/sessions" / rolloutName(*row.id, unixMilliseconds)).string();
    setTimes(row, unixMilliseconds, unixMilliseconds);
    return row;
}

PlannedThread plannedThread(const SampleSetting &setting, std::size_t index) {
    SampleRandom random(setting.seed, index * 2);
    const bool isRunning = index < runningThreads(setting.threads);
    const std::int64_t age = isRunning ? runningAge(random) : idleAge(random, index);
    const std::int64_t updated = setting.nowMilliseconds - age;
    PlannedThread thread;
    thread.createdMilliseconds = updated - random.skewed(30 * second, 3 * day);
    SampleRow &row = thread.row;
    row = newThread(random, project(setting, index, random), setting.home,
                    thread.createdMilliseconds);
    setTimes(row, thread.createdMilliseconds, updated);
    thinTimes(random, row);
    const std::size_t trickyStep = std::clamp<std::size_t>(setting.threads / 50, 4, 40);
    if (index % trickyStep == 3) {
        makeTricky(row, index / trickyStep);
    }
    if (thread.isSubagent = random.chance(120); thread.isSubagent) {
        makeSubagent(random, row);
    }
    row.archived = !isRunning && random.chance(150) ? 1 : 0;
    thread.ending = isRunning ? SampleEnding::running : idleEnding(random, thread.isArchived());
    if (thread.ending == SampleEnding::noPath) {
        row.rolloutPath = std::nullopt;
    }
    return thread;
}

std::string rolloutText(const SampleSetting &setting, std::size_t index,
                        const PlannedThread &thread, SampleRollouts rollouts) {
    if (thread.ending == SampleEnding::emptyFile) {
        return {};
    }
    SampleRandom random(setting.seed, index * 2 + 1);
    const std::size_t bytes = rolloutBytes(random, setting.threads, rollouts);
    const SampleLanguage language =
        bytes > 400'000 || random.chance(500) ? SampleLanguage::english : SampleLanguage::chinese;
    Rollout rollout(random, language, thread.createdMilliseconds);
    rollout.describeSession(thread.row);
    if (thread.ending == SampleEnding::undecided) {
        rollout.work(bytes);
        return rollout.text();
    }
    const std::string message = language == SampleLanguage::chinese
                                    ? thread.row.firstUserMessage.value_or("")
                                    : samplePreview(random, language);
    writeTasks(rollout, random, thread.ending, message, language, bytes);
    if (rollouts != SampleRollouts::small && random.chance(100)) {
        rollout.tear();
    }
    return rollout.text();
}

} // namespace tallyview::demo
