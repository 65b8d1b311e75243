#pragma once

#include <cstddef>
#include <string_view>

namespace tallyview {

/// Standard output, unbuffered, and the terminal behind it, if any.
class Output {
public:
    struct Size {
        std::size_t columns;
        std::size_t rows;
    };

    bool isTerminal() const { return m_isTerminal; }
    /// A terminal whose cursor can be moved and whose letters can be coloured.
    bool isScreen() const;
    /// Of the terminal as it is now, though ten columns at least; where it does not tell, 80 by 24.
    Size size() const;

    /// Writes all of `bytes`, or remembers why that failed and writes no more.
    void write(std::string_view bytes);
    /// Whether what is written can still reach anybody: not if the terminal or the pipe's reader
    /// has gone.
    bool hasReader() const;
    /// Why writing failed, as errno has it; 0 while it did not.
    int error() const { return m_error; }

private:
    bool m_isTerminal = standardOutputIsTerminal();
    int m_error = 0;

    static bool standardOutputIsTerminal();
};

} // namespace tallyview
