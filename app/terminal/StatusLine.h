#pragma once

#include "app/model/DashboardModel.h"
#include "app/terminal/Arguments.h"

#include <string>

namespace tallyview {

/// How many tasks run and have completed, of the selected project if there is one, in one line of
/// the form that `arguments` ask for. Nothing of what others wrote is in it but the titles in a
/// bar's tool tip.
std::string statusLine(const DashboardModel &model, const Arguments &arguments);

} // namespace tallyview
