"""Lists the agent's threads and their states, as one would write it in an afternoon.

    list_threads.py DATABASE

Prints the milliseconds that it took, by the clock and of the processor, without the start of the
interpreter.
"""

import json
import os
import sqlite3
import sys
import time

TAIL = 512 * 1024
STATES = {
    "task_started": "running",
    "task_complete": "completed",
    "turn_aborted": "completed",
}
QUERY = """
    SELECT id, title, preview, cwd, source, model, reasoning_effort, git_branch, tokens_used,
           created_at, created_at_ms, updated_at, updated_at_ms, recency_at, recency_at_ms,
           archived, agent_role, agent_path, rollout_path
    FROM threads
    ORDER BY CASE WHEN recency_at_ms > 0 THEN recency_at_ms
                  WHEN updated_at_ms > 0 THEN updated_at_ms
                  ELSE updated_at * 1000 END DESC
"""


def state(path):
    """The state after the latest task event in the end of a rollout file."""
    try:
        with open(path, "rb") as file:
            size = file.seek(0, os.SEEK_END)
            file.seek(max(0, size - TAIL))
            tail = file.read().decode("utf-8", "replace")
    except OSError:
        return "completed"
    for line in reversed(tail.split("\n")):
        try:
            event = json.loads(line)
            if event["type"] == "event_msg" and event["payload"]["type"] in STATES:
                return STATES[event["payload"]["type"]]
        except (ValueError, KeyError, TypeError):
            continue
    return "completed"


def threads(database):
    connection = sqlite3.connect(f"file:{database}?mode=ro", uri=True)
    connection.row_factory = sqlite3.Row
    result = []
    for row in connection.execute(QUERY):
        thread = dict(row)
        live = not row["archived"] and row["rollout_path"]
        thread["state"] = state(row["rollout_path"]) if live else "completed"
        result.append(thread)
    connection.close()
    return result


start = time.perf_counter(), time.process_time()
listed = threads(sys.argv[1])
print((time.perf_counter() - start[0]) * 1000, (time.process_time() - start[1]) * 1000)
