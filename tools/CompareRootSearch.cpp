// Old rate bisections against the shared rate search, on 1,000 random
// cases each: IRR of keypad cash-flow lists and I/Y of keypad registers.
// Prints how many results changed and by how much (docs/testing.md).
//
//   compare-root-search [SEED]
#include "calculator/CalculatorModel.h"
#include "numerics/FinanceMath.h"
#include "numerics/RootSearch.h"
#include "support/OldRateSearches.h"

#include <QCoreApplication>
#include <QString>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>

namespace {

struct Tally {
    int cases = 0, same = 0, bothNaN = 0, foundNow = 0, lostNow = 0, otherRoot = 0;
    // One root inside the old bounds, found by both: the old search met its
    // tolerance, or ran out of passes (the value never came within 1e-6 in
    // floating point: huge amounts or terms).
    int changedConverged = 0, changedUnconverged = 0;
    double largestRelative = 0;
    // The change in units of what the old tolerance allowed, for the
    // searches that met it: 1e-6 / |value'(rate)| is the change of rate that
    // moves the value by 1e-6.
    double largestInTolerances = 0;

    void add(double old, double now, bool oldInsideBounds, bool severalRoots,
             const std::function<double(double)>& value)
    {
        ++cases;
        if (std::isnan(old) && std::isnan(now)) {
            ++bothNaN;
        } else if (std::isnan(old)) {
            ++foundNow;
        } else if (std::isnan(now)) {
            ++lostNow;
        } else if (old == now) {
            ++same;
        } else if (!oldInsideBounds || severalRoots) {
            ++otherRoot;
        } else {
            largestRelative = std::max(largestRelative, std::fabs(now - old) / std::fabs(now));
            if (std::fabs(value(old)) <= 1e-6) {
                ++changedConverged;
                const double h = 1e-7 * std::max(1.0, std::fabs(now));
                const double slope = (value(now + h) - value(now - h)) / (2 * h);
                largestInTolerances =
                    std::max(largestInTolerances, std::fabs(now - old) * std::fabs(slope) / 1e-6);
            } else {
                ++changedUnconverged;
            }
        }
    }
    void print(const char* name) const
    {
        std::printf("%s, %d cases:\n"
                    "  same bits: %d\n"
                    "  one root inside the old bounds, changed: %d where the old search met its "
                    "tolerance (largest change %.3g of what that tolerance allowed), %d where it "
                    "ran out of passes; largest relative change %.3g\n"
                    "  NaN before, a rate now: %d\n"
                    "  a rate before, NaN now: %d\n"
                    "  a rate outside the old bounds, or another of several roots: %d\n"
                    "  NaN both: %d\n",
                    name, cases, same, changedConverged, largestInTolerances, changedUnconverged,
                    largestRelative, foundNow, lostNow, otherRoot, bothNaN);
    }
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const unsigned seed = argc > 1 ? unsigned(std::stoul(argv[1])) : 25u;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);

    Tally irr;
    for (int n = 0; n < 1000; ++n) {
        CashFlowList list = CalculatorModel::freshCashFlows();
        const int entries = 2 + int(unit(random) * 8);
        const double scale = std::exp(unit(random) * 14) * 1e-2;
        for (int e = 0; e < entries; ++e) {
            // Mostly an outlay first, sometimes money in first, any signs after.
            double cash = (unit(random) - (e == 0 ? 0.85 : 0.25)) * scale;
            if (unit(random) < 0.1)
                cash = -cash;
            list[size_t(e)] = {QString::number(cash, 'f', 4),
                               QString::number(1 + int(unit(random) * 3))};
        }
        const auto npv = [&list](double x) {
            return CalculatorModel::calculateNpvWithRate(list, x);
        };
        const double old = OldRateSearches::irr(npv);
        int inside = 0;
        for (double r : CalculatorModel::internalRatesOfReturn(list).all)
            inside += r > -1 && r < 1;
        irr.add(old, CalculatorModel::calculateIrr(list), !std::isnan(old), inside > 1, npv);
    }
    irr.print("IRR (keypad cash-flow lists)");

    Tally rate;
    for (int n = 0; n < 1000; ++n) {
        CalculatorModel m;
        m.paymentFrequency = unit(random) < 0.5 ? 12 : 1;
        m.compounding = m.paymentFrequency;
        m.paymentMode = unit(random) < 0.3 ? QStringLiteral("BEG") : QStringLiteral("END");
        m.period = std::ceil(std::exp(unit(random) * 7));
        m.pv = std::exp(unit(random) * 16) * 1e-3;
        m.pmt = unit(random) < 0.5 ? 0.0 : m.pv * (unit(random) - 0.3) * 0.2;
        m.fv = (m.pv + std::max(0.0, m.pmt) * m.period) * (0.3 + unit(random) * 4);
        if (unit(random) < 0.05)
            m.fv = -m.fv;
        const bool beginning = m.paymentMode == QLatin1String("BEG");
        // The future value at an annual rate in percent, less the target.
        const auto difference = [&](double percent) {
            const double i =
                FinanceMath::equivalentRate(percent / 100, int(m.compounding), m.paymentFrequency) /
                m.paymentFrequency;
            return m.pv * FinanceMath::growthFactor(i, m.period) +
                   m.pmt * FinanceMath::growthFactorMinusOne(i, m.period) / i *
                       (beginning ? 1 + i : 1.0) -
                   m.fv;
        };
        const double old =
            OldRateSearches::annualRate([&](double annual) { return difference(annual * 100); });
        // Several rates make these registers agree: the old search found
        // whichever its halving met, the new one the one nearest 10 %.
        const RootSearch::Roots roots = RootSearch::findRoots([&](double i) {
            return FinanceMath::futureValueDifference(i, m.period, m.pv, m.pmt, beginning, m.fv);
        });
        m.computeRate();
        rate.add(old * 100, m.rate, old > 0 && old<1, roots.all.size()> 1, difference);
    }
    rate.print("I/Y (keypad registers, percent a year)");
    return 0;
}
