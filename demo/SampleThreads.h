#pragma once

#include "demo/SampleRandom.h"
#include "demo/SampleRow.h"
#include "demo/SampleVocabulary.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace tallyview::demo {

/// How large rollout files are: of the sizes that real work leaves behind, the same but more than
/// 512 KiB for a tenth of the live threads however many there are, all about 1 KB, or not there
/// at all.
enum class SampleRollouts { realistic, heavy, small, none };

/// How a sample thread's rollout file ends, or why there is nothing to read.
enum class SampleEnding { running, completed, aborted, undecided, emptyFile, missingFile, noPath };

/// What all threads of one sample home have in common.
struct SampleSetting {
    std::filesystem::path home;
    std::size_t threads = 0;
    std::uint64_t seed = 0;
    std::int64_t nowMilliseconds = 0;
};

/// One thread of a sample home as it is about to be written.
struct PlannedThread {
    SampleRow row;
    SampleEnding ending = SampleEnding::completed;
    std::int64_t createdMilliseconds = 0;
    bool isSubagent = false;

    bool isArchived() const { return row.archived.value_or(0) != 0; }
};

/// The thread number `index` of a home; the same arguments give the same thread.
PlannedThread plannedThread(const SampleSetting &setting, std::size_t index);

/// The contents of its rollout file. A file larger than 512 KiB is ASCII, so that reading it
/// backwards in pieces of any size never cuts a character.
std::string rolloutText(const SampleSetting &setting, std::size_t index,
                        const PlannedThread &thread, SampleRollouts rollouts);

/// The row of a thread that the agent starts at the given time. Its rollout file is to be made.
SampleRow newThread(SampleRandom &random, const SampleProject &project,
                    const std::filesystem::path &home, std::int64_t unixMilliseconds);

/// Any of the sample projects, busy ones more often.
const SampleProject &weightedProject(SampleRandom &random);

/// Sets the row's times of the latest activity.
void touch(SampleRow &row, std::int64_t unixMilliseconds);

} // namespace tallyview::demo
