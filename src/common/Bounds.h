#pragma once
#include <cmath>

/// What a till can mean. Numbers beyond it are slips of the hand; far beyond it sums would stop being money.
/// Written so that what is no number is none of these.
namespace common {

constexpr double kLargestQuantity = 100'000;
constexpr double kSmallestQuantity = 0.001;
constexpr double kLargestAmount = 1'000'000;
constexpr double kLargestRate = 100;

/// A quantity may be 0 or negative.
inline bool isQuantity(double quantity) {
    return quantity == 0 ||
           (std::abs(quantity) >= kSmallestQuantity && std::abs(quantity) <= kLargestQuantity);
}

inline bool isAmount(double amount) {
    return std::abs(amount) <= kLargestAmount;
}

inline bool isRate(double percent) {
    return percent >= 0 && percent <= kLargestRate;
}

} // namespace common
