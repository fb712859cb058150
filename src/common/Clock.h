#pragma once

/// The one clock of the program, so that a test can set it.
namespace common::clock {

/// Date and local time as a serial (see Serial in Value.h).
double now();
/// The whole day of now().
double today();
/// The time of day as fraction of now().
double time();

/// Stops the clock at `serial` until release().
void set(double serial);
void release();

} // namespace common::clock
