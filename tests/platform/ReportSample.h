#pragma once
#include "platform/report/ReportTemplate.h"
#include <QString>

namespace test {

/// A demo order as the slip's print tables hold it: products with extras, a discount, a long name, a gap, a
/// line without price.
platform::ReportData slipSample();

/// The first `lines` rows of the sample's lines, repeated as often as needed.
platform::ReportData longSlipSample(int lines);

} // namespace test
