// Old rate bisections against the shared rate search, on 1,000 random
// cases each: IRR of keypad cash-flow lists and I/Y of keypad registers.
// Prints how many results changed and by how much (docs/testing.md).
//
//   compare-root-search [SEED]
#include "calculator/CalculatorModel.h"
#include "framework/FinanceMath.h"
#include "framework/RootSearch.h"
#include "support/OldRateSearches.h"

#include <QCoreApplication>
#include <QString>
#include <cmath>
#include <cstdio>
#include <random>

namespace {

struct Tally {
    int cases = 0, bothNaN = 0, same = 0, changedInside = 0, foundNow = 0, lostNow = 0;
    int otherRoot = 0;
    double largestInside = 0, largestRelativeInside = 0;
    // The largest change in units of what the old tolerance allowed: the
    // change of rate that moves the value by 1e-6, 1e-6 / |value'(rate)|.
    double largestInTolerances = 0;

    // `slope`: the value's derivative by the rate at the new root.
    void add(double old, double now, bool oldInsideBounds, bool severalRoots, double slope)
    {
        ++cases;
        if (std::isnan(old) && std::isnan(now))
            ++bothNaN;
        else if (std::isnan(old))
            ++foundNow;
        else if (std::isnan(now))
            ++lostNow;
        else if (old == now)
            ++same;
        else if (oldInsideBounds && !severalRoots) {
            ++changedInside;
            largestInside = std::max(largestInside, std::fabs(now - old));
            largestRelativeInside =
                std::max(largestRelativeInside, std::fabs(now - old) / std::fabs(now));
            largestInTolerances =
                std::max(largestInTolerances, std::fabs(now - old) * std::fabs(slope) / 1e-6);
        } else {
            ++otherRoot;
        }
    }
    void print(const char* name) const
    {
        std::printf("%s: %d cases; same bits %d; changed inside the old bounds %d (largest "
                    "change %.3g, relative %.3g, %.3g of the old tolerance); found now, NaN before "
                    "%d; NaN now, found "
                    "before %d; outside the old bounds or another of several roots %d; NaN "
                    "both %d\n",
                    name, cases, same, changedInside, largestInside, largestRelativeInside,
                    largestInTolerances, foundNow, lostNow, otherRoot, bothNaN);
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
        const double old = OldRateSearches::irr(
            [&list](double x) { return CalculatorModel::calculateNpvWithRate(list, x); });
        const CalculatorModel::Rates rates = CalculatorModel::internalRatesOfReturn(list);
        int inside = 0;
        for (double r : rates.all)
            inside += r > -1 && r < 1;
        const double now = CalculatorModel::calculateIrr(list);
        const double h = 1e-7 * std::max(1.0, std::fabs(now));
        const double slope = (CalculatorModel::calculateNpvWithRate(list, now + h) -
                              CalculatorModel::calculateNpvWithRate(list, now - h)) /
                             (2 * h);
        irr.add(old, now, !std::isnan(old), inside > 1, slope);
    }
    irr.print("IRR (keypad lists)");

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
        CalculatorModel old = m;
        const int periods = int(m.compounding);
        const double beginning = m.paymentMode == QLatin1String("BEG") ? 1.0 : 0.0;
        const auto difference = [&](double annual) {
            const double i = FinanceMath::equivalentRate(annual, periods, m.paymentFrequency) /
                             m.paymentFrequency;
            return m.pv * FinanceMath::growthFactor(i, m.period) +
                   m.pmt * FinanceMath::growthFactorMinusOne(i, m.period) / i *
                       (1 + i * beginning) -
                   m.fv;
        };
        const double oldRate = OldRateSearches::annualRate(difference);
        m.computeRate();
        const double now = m.rate / 100;
        const double h = 1e-7 * std::max(1.0, std::fabs(now));
        const double slope = (difference(now + h) - difference(now - h)) / (2 * h);
        // Several rates make these registers agree: the old search found
        // whichever its halving met, the new one the one nearest 10 %.
        const RootSearch::Roots roots = RootSearch::findRoots([&](double i) {
            return FinanceMath::futureValueDifference(i, m.period, m.pv, m.pmt, beginning > 0,
                                                      m.fv);
        });
        const bool oldInside = oldRate > 0 && oldRate < 1;
        const bool several = roots.all.size() > 1;
        rate.add(oldRate * 100, m.rate, oldInside, several, slope / 100);
        if (qEnvironmentVariableIsSet("SHOW") && oldInside && !several &&
            std::fabs(m.rate - oldRate * 100) * std::fabs(slope / 100) > 1e-5)
            std::printf("N %g PV %.17g PMT %.17g FV %.17g P/Y %d %s: old %.17g new %.17g, "
                        "old difference %g\n",
                        m.period, m.pv, m.pmt, m.fv, m.paymentFrequency, qPrintable(m.paymentMode),
                        oldRate * 100, m.rate, difference(oldRate));
    }
    rate.print("I/Y (keypad registers)");
    return 0;
}
