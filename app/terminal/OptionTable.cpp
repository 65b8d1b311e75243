#include "app/terminal/OptionTable.h"

#include <algorithm>

namespace tallyview {

bool OptionText::isFor(Arguments::Command command) const {
    return commands.empty() || std::ranges::find(commands, command) != commands.end();
}

const std::vector<CommandText> &commandTexts() {
    using enum Arguments::Command;
    static const std::vector<CommandText> texts{
        {list, "list", "", "列出任务，按时间分组；不写命令时也是它"},
        {show, "show", "ID", "一个任务的属性和预览；ID 写出唯一的开头即可"},
        {open, "open", "ID", "在 Orvik 中打开任务"},
        {status, "status", "", "一行：进行中和已完成的任务数"},
        {watch, "watch", "", "在终端里持续显示列表；在管道中，任务开始或完成时各写一行"},
        {projects, "projects", "", "列出项目名称，每行一个"},
    };
    return texts;
}

const std::vector<OptionText> &optionTexts() {
    using enum Arguments::Command;
    static const std::vector<OptionText> texts{
        {"status", "STATUS", "状态：running、completed 或 all（默认 running）", {list, watch}},
        {"recency", "TIME", "时间：recent、today、week 或 older（默认 today）", {list, watch}},
        {"project", "NAME", "只看这个项目", {list, watch, status}},
        {"search", "TEXT", "标题、预览、项目、目录、分支或来源中含有这段文字", {list, watch}},
        {"subagents", "", "包括子任务", {list, watch}},
        {"pinned", "", "只看已固定的任务", {list, watch}},
        {"oldest-first", "", "最早的在前", {list, watch}},
        {"all", "", "不作任何筛选，另外写出的除外", {list, watch}},
        {"n", "N", "最多 N 个任务", {list, watch}},
        {"interval", "SECONDS", "每隔多少秒读取一次（默认 30，至少 1）", {watch}},
        {"format", "FORMAT", "plain 或 waybar（默认 plain）", {status}},
        {"json", "", "输出 JSON", {list, show, status, watch}},
        {"color", "WHEN", "颜色：auto、always 或 never（默认 auto）", {list, show, watch}},
        {"help", "", "显示本说明", {}},
        {"version", "", "显示版本", {}},
    };
    return texts;
}

} // namespace tallyview
