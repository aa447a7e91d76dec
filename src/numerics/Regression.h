#pragma once

#include <cstddef>
#include <vector>

// Summary statistics of a column of numbers and least-squares lines through
// pairs of them, for the statistics calculator; plain C++, no Qt.
//
// Accuracy: every spread (standard deviations, the slope, r) is worked out
// in two passes, the means first and then sums of the values' distances
// from them, with the rounding left in those distances taken back out
// (the corrected two-pass sum). The textbook one-pass forms, Σx² − (Σx)²/n,
// subtract two nearly equal large numbers and lose most digits on data
// that sit far from 0 (a year, a price of 1000.01, 1000.02, ...); the
// two-pass ones keep nearly all of them.
namespace Regression {

// n, the plain sums Σv and Σv², the mean, and the sample (n − 1) and
// population (n) standard deviations. An empty column gives n = 0 and NaN
// for the rest (sums 0); a single value has no sample standard deviation
// (NaN) and a population one of 0.
struct Summary {
    std::size_t n = 0;
    double sum = 0;
    double sumOfSquares = 0;
    double mean = 0;
    double sampleSd = 0;
    double populationSd = 0;
    // Σ(v − mean)², the spread behind both standard deviations.
    double centredSquares = 0;
};
Summary summarize(const std::vector<double>& values);

// Σ x·y over the pairs (the shorter length counts).
double sumOfProducts(const std::vector<double>& x, const std::vector<double>& y);

// The least-squares line y = intercept + slope·x through the pairs and
// their correlation r. Why there is none, when there is none.
struct Line {
    enum class Problem {
        None,
        TooFewPoints, // fewer than two pairs
        ConstantX,    // every x the same: no slope
        NotFinite,    // a value or a sum beyond what a double holds
    };
    double intercept = 0;
    double slope = 0;
    // NaN when every y is the same (no spread to correlate), though the line
    // (slope 0) is there.
    double r = 0;
    Problem problem = Problem::None;
};
Line fitLine(const std::vector<double>& x, const std::vector<double>& y);

// The four curves, each fitted as a straight line through transformed
// values:
// - Linear:      y = a + b·x      (y on x)
// - Logarithmic: y = a + b·ln x   (y on ln x; x > 0)
// - Exponential: y = a·e^(b·x)    (ln y on x, a = e^intercept; y > 0)
// - Power:       y = a·x^b        (ln y on ln x, a = e^intercept; x, y > 0)
// r is the correlation of the transformed values.
enum class Model { Linear, Logarithmic, Exponential, Power };

// Whether the model takes x (and y) at all: ln of a number ≤ 0 is none.
bool takesX(Model model, double x);
bool takesY(Model model, double y);

// The fitted curve: a, b and r as above.
struct Fit {
    double a = 0;
    double b = 0;
    double r = 0;
    Line::Problem problem = Line::Problem::None;
};
// Fits `model` to the pairs; every pair must be taken by the model (see
// takesX and takesY), else the result is NotFinite.
Fit fit(Model model, const std::vector<double>& x, const std::vector<double>& y);

// y at `x` on the fitted curve; NaN where the curve has no value (x ≤ 0 on
// the logarithmic and power curves).
double predictY(Model model, double a, double b, double x);
// x where the fitted curve reaches `y`; NaN where no x does (a flat curve,
// b = 0, or a y of the other sign than a on the exponential and power
// curves).
double predictX(Model model, double a, double b, double y);

} // namespace Regression
