#include "Regression.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Regression {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// The mean of `values` (n > 0) from their plain sum (`firstGuess`),
// corrected by the values' mean distance from it (`mean`).
struct Centre {
    double mean = 0;
    double firstGuess = 0;
};

Centre centreOf(const std::vector<double>& values, double sum)
{
    const double n = double(values.size());
    Centre centre;
    centre.firstGuess = sum / n;
    double drift = 0;
    for (double v : values)
        drift += v - centre.firstGuess;
    centre.mean = centre.firstGuess + drift / n;
    return centre;
}

bool allEqual(const std::vector<double>& values)
{
    return std::all_of(values.begin(), values.end(),
                       [first = values.front()](double v) { return v == first; });
}

} // namespace

Summary summarize(const std::vector<double>& values)
{
    Summary s;
    s.n = values.size();
    for (double v : values) {
        s.sum += v;
        s.sumOfSquares += v * v;
    }
    if (s.n == 0) {
        s.mean = s.sampleSd = s.populationSd = s.centredSquares = noNumber;
        return s;
    }
    const Centre centre = centreOf(values, s.sum);
    s.mean = centre.mean;
    // Corrected two-pass: Σd² − (Σd)²/n with d measured from the first
    // guess, which takes out what rounding left in that guess.
    double distances = 0;
    double squares = 0;
    for (double v : values) {
        const double d = v - centre.firstGuess;
        distances += d;
        squares += d * d;
    }
    const double n = double(s.n);
    s.centredSquares = allEqual(values) ? 0 : std::max(0.0, squares - distances * distances / n);
    s.populationSd = std::sqrt(s.centredSquares / n);
    s.sampleSd = s.n > 1 ? std::sqrt(s.centredSquares / (n - 1)) : noNumber;
    return s;
}

double sumOfProducts(const std::vector<double>& x, const std::vector<double>& y)
{
    const std::size_t n = std::min(x.size(), y.size());
    double sum = 0;
    for (std::size_t i = 0; i < n; ++i)
        sum += x[i] * y[i];
    return sum;
}

Line fitLine(const std::vector<double>& x, const std::vector<double>& y)
{
    Line line;
    const std::size_t count = std::min(x.size(), y.size());
    if (count < 2) {
        line.problem = Line::Problem::TooFewPoints;
        line.intercept = line.slope = line.r = noNumber;
        return line;
    }
    const std::vector<double> xs(x.begin(), x.begin() + std::ptrdiff_t(count));
    const std::vector<double> ys(y.begin(), y.begin() + std::ptrdiff_t(count));
    if (allEqual(xs)) {
        line.problem = Line::Problem::ConstantX;
        line.intercept = line.slope = line.r = noNumber;
        return line;
    }
    double sumX = 0;
    double sumY = 0;
    for (std::size_t i = 0; i < count; ++i) {
        sumX += xs[i];
        sumY += ys[i];
    }
    const Centre cx = centreOf(xs, sumX);
    const Centre cy = centreOf(ys, sumY);
    double dxSum = 0;
    double dySum = 0;
    double sxx = 0;
    double syy = 0;
    double sxy = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double dx = xs[i] - cx.firstGuess;
        const double dy = ys[i] - cy.firstGuess;
        dxSum += dx;
        dySum += dy;
        sxx += dx * dx;
        syy += dy * dy;
        sxy += dx * dy;
    }
    const double n = double(count);
    sxx -= dxSum * dxSum / n;
    syy -= dySum * dySum / n;
    sxy -= dxSum * dySum / n;
    if (!std::isfinite(sxx) || !std::isfinite(syy) || !std::isfinite(sxy) ||
        !std::isfinite(cx.mean) || !std::isfinite(cy.mean)) {
        line.problem = Line::Problem::NotFinite;
        line.intercept = line.slope = line.r = noNumber;
        return line;
    }
    line.slope = sxy / sxx;
    line.intercept = cy.mean - line.slope * cx.mean;
    if (allEqual(ys)) {
        line.slope = 0;
        line.intercept = ys.front();
        line.r = noNumber;
    } else {
        // Rounding can carry |r| a hair past 1 on points on a line.
        line.r = std::clamp(sxy / std::sqrt(sxx) / std::sqrt(syy), -1.0, 1.0);
    }
    return line;
}

bool takesX(Model model, double x)
{
    return (model != Model::Logarithmic && model != Model::Power) || x > 0;
}

bool takesY(Model model, double y)
{
    return (model != Model::Exponential && model != Model::Power) || y > 0;
}

Fit fit(Model model, const std::vector<double>& x, const std::vector<double>& y)
{
    const bool logX = model == Model::Logarithmic || model == Model::Power;
    const bool logY = model == Model::Exponential || model == Model::Power;
    std::vector<double> tx;
    std::vector<double> ty;
    const std::size_t count = std::min(x.size(), y.size());
    tx.reserve(count);
    ty.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        tx.push_back(logX ? std::log(x[i]) : x[i]);
        ty.push_back(logY ? std::log(y[i]) : y[i]);
    }
    Fit result;
    if (std::any_of(tx.begin(), tx.end(), [](double v) { return !std::isfinite(v); }) ||
        std::any_of(ty.begin(), ty.end(), [](double v) { return !std::isfinite(v); })) {
        result.a = result.b = result.r = noNumber;
        result.problem = Line::Problem::NotFinite;
        return result;
    }
    const Line line = fitLine(tx, ty);
    result.problem = line.problem;
    result.a = logY ? std::exp(line.intercept) : line.intercept;
    result.b = line.slope;
    result.r = line.r;
    return result;
}

double predictY(Model model, double a, double b, double x)
{
    switch (model) {
    case Model::Linear:
        return a + b * x;
    case Model::Logarithmic:
        return x > 0 ? a + b * std::log(x) : noNumber;
    case Model::Exponential:
        return a * std::exp(b * x);
    case Model::Power:
        return x > 0 ? a * std::pow(x, b) : noNumber;
    }
    return noNumber;
}

double predictX(Model model, double a, double b, double y)
{
    if (b == 0 || !std::isfinite(b))
        return noNumber;
    switch (model) {
    case Model::Linear:
        return (y - a) / b;
    case Model::Logarithmic:
        return std::exp((y - a) / b);
    case Model::Exponential:
        return y / a > 0 ? std::log(y / a) / b : noNumber;
    case Model::Power:
        return y / a > 0 ? std::pow(y / a, 1 / b) : noNumber;
    }
    return noNumber;
}

} // namespace Regression
