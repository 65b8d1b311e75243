#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace tallyview {

const std::string columns =
    "id, title, preview, cwd, source, model, reasoning_effort, git_branch, tokens_used, created_at,"
    " created_at_ms, updated_at, updated_at_ms, recency_at, recency_at_ms, archived, agent_role,"
    " agent_path, rollout_path";
const std::string schema = "CREATE TABLE threads (" + columns + ");";

/// A connection that writes, as the agent does.
class Writer {
public:
    explicit Writer(const std::string &path) {
        EXPECT_EQ(sqlite3_open(path.c_str(), &m_connection), SQLITE_OK);
    }
    ~Writer() { sqlite3_close(m_connection); }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    void execute(const std::string &sql) const {
        EXPECT_EQ(sqlite3_exec(m_connection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_connection) << " in " << sql;
    }

private:
    sqlite3 *m_connection = nullptr;
};

} // namespace tallyview
