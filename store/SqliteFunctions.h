#pragma once
// The dialect's collation and functions, made known to a SQLite connection.
#include <optional>
#include <vector>

#include "store/Sqlite.h"
#include "store/sql/Functions.h"

namespace koben {

/// What a function could not do; SQLite only carries a text, so the error waits here.
class SqliteFunctions {
public:
    /// Registers all; must live as long as the connection.
    explicit SqliteFunctions(sqlite3* file);
    SqliteFunctions(const SqliteFunctions&) = delete;
    SqliteFunctions& operator=(const SqliteFunctions&) = delete;

    /// The error of the function that failed last, once.
    std::optional<ConversionError> takeError() { return std::exchange(m_error, std::nullopt); }

    struct Call {
        SqliteFunctions* owner;
        const sql::Function* function;
    };
    /// Runs `work` and turns what it throws into a failed function.
    template <typename Work>
    void guard(sqlite3_context* context, Work work) {
        try {
            work();
        } catch (const ConversionError& e) {
            m_error = e;
            sqlite3_result_error(context, "koben", -1);
        }
    }

private:
    std::optional<ConversionError> m_error;
    std::vector<Call> m_calls;
};

}  // namespace koben
