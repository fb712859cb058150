#pragma once
#include <QApplication>

namespace shell {

/// Style, font and the German texts of the toolkit's own dialogs: one look on every system.
void applyStyle(QApplication& application);

} // namespace shell
