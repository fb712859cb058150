#pragma once
#include <QString>

namespace install {

/// One line of standard input, without its end; a terminal does not show what is typed.
QString readHiddenLine();

} // namespace install
