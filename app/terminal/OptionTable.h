#pragma once

#include "app/terminal/Arguments.h"

#include <QString>

#include <vector>

namespace tallyview {

/// A command by its name, and what it does.
struct CommandText {
    Arguments::Command command;
    QString name;
    QString operand; ///< what has to follow it; empty for nothing
    QString help;
};

/// An option, what it does and the commands that take it.
struct OptionText {
    QString name;
    QString value; ///< what the value stands for; empty for an option without one
    QString help;
    std::vector<Arguments::Command> commands; ///< empty for all

    bool isFor(Arguments::Command command) const;
};

/// In the order in which the help tells them.
const std::vector<CommandText> &commandTexts();
const std::vector<OptionText> &optionTexts();

} // namespace tallyview
