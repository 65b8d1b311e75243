#pragma once

#include <QIcon>

/// What the application carries in its own resources.
namespace tallyview::AppAssets {

/// The application's icon, created on first use: the resource "OrvikIcon", else the desktop's
/// generic application icon, else an empty image of 64 by 64 points.
const QIcon &orvikIcon();

} // namespace tallyview::AppAssets
