#pragma once
#include <QApplication>

namespace shell {

/// Style, font, the German texts of the toolkit's own dialogs and the promptness of buttons: one look on
/// every system. A larger font of the desktop stays as large.
void applyStyle(QApplication& application);

} // namespace shell
