#pragma once
#include <QtGlobal>

/// Tables of the shop's settings that hold the firm's row and the one that came with the installation.
namespace shop {

constexpr qint64 kFirmRow = 1;
constexpr qint64 kDefaultRow = 0;

} // namespace shop
