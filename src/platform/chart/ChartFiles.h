#pragma once
#include "platform/chart/Chart.h"
#include <QByteArray>

namespace platform {

class Dialogs;
struct Services;

/// The picture as a file, dark on white, 1600 x 900.
QByteArray pngOf(const Chart& chart);
QByteArray svgOf(const Chart& chart);

/// Asks for the file and writes the picture, as SVG where the name tells so, else as PNG. What fails is told.
void saveChart(const Chart& chart, Dialogs& dialogs);

/// Prints the picture like a list: a sheet of its own under the firm's name, lying at first, on the printer
/// that is chosen, by way of the preview.
void printChart(const Chart& chart, const Services& services);

} // namespace platform
