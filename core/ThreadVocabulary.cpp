#include "core/ThreadVocabulary.h"

#include <utility>

namespace tallyview {

std::string_view rawValue(ThreadRunState state) {
    switch (state) {
    case ThreadRunState::running:
        return "running";
    case ThreadRunState::completed:
        return "completed";
    }
    std::unreachable();
}

std::string_view rawValue(TaskStatusFilter filter) {
    switch (filter) {
    case TaskStatusFilter::running:
        return "running";
    case TaskStatusFilter::completed:
        return "completed";
    case TaskStatusFilter::all:
        return "all";
    }
    std::unreachable();
}

std::string_view rawValue(TaskRecencyFilter filter) {
    switch (filter) {
    case TaskRecencyFilter::recent:
        return "recent";
    case TaskRecencyFilter::today:
        return "today";
    case TaskRecencyFilter::week:
        return "week";
    case TaskRecencyFilter::older:
        return "older";
    }
    std::unreachable();
}

std::string_view title(ThreadRunState state) {
    switch (state) {
    case ThreadRunState::running:
        return "进行中";
    case ThreadRunState::completed:
        return "已完成";
    }
    std::unreachable();
}

std::string_view title(TaskStatusFilter filter) {
    switch (filter) {
    case TaskStatusFilter::running:
        return "进行中";
    case TaskStatusFilter::completed:
        return "已完成";
    case TaskStatusFilter::all:
        return "全部";
    }
    std::unreachable();
}

std::string_view title(TaskRecencyFilter filter) {
    switch (filter) {
    case TaskRecencyFilter::recent:
        return "刚刚";
    case TaskRecencyFilter::today:
        return "今天";
    case TaskRecencyFilter::week:
        return "本周";
    case TaskRecencyFilter::older:
        return "更早";
    }
    std::unreachable();
}

} // namespace tallyview
