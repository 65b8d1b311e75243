# Completes the arguments of tallyview in fish.
set -l commands list show open status watch projects
function __tallyview_ids
    tallyview --all --json 2>/dev/null | string match --regex --groups-only '^\[?\{"id":"([^"\\\\]*)"'
end
complete -c tallyview -f
complete -c tallyview -n "not __fish_seen_subcommand_from $commands" -a "$commands"
complete -c tallyview -n "__fish_seen_subcommand_from show open" -a "(__tallyview_ids)"
complete -c tallyview -l status -x -a "running completed all" -d 状态
complete -c tallyview -l recency -x -a "recent today week older" -d 时间
complete -c tallyview -l project -x -a "(tallyview projects 2>/dev/null)" -d 项目
complete -c tallyview -l search -x -d 文字
complete -c tallyview -l subagents -d 包括子任务
complete -c tallyview -l pinned -d 只看已固定的任务
complete -c tallyview -l oldest-first -d 最早的在前
complete -c tallyview -l all -d 不作任何筛选
complete -c tallyview -s n -x -d "最多 N 个任务"
complete -c tallyview -l interval -x -d 间隔秒数
complete -c tallyview -l format -x -a "plain waybar" -d 格式
complete -c tallyview -l json -d "输出 JSON"
complete -c tallyview -l color -x -a "auto always never" -d 颜色
complete -c tallyview -l help -d 显示说明
complete -c tallyview -l version -d 显示版本
