#pragma once

#include <QString>
#include <functional>
#include <vector>

// The one search for rates: every rate solve of the app (the TVM form's and
// the keypad's I/Y, the NPV form's and the keypad's IRR, XIRR, and any later
// yield or rate) finds its roots here, so they all agree on what they find.
//
// The function is a value at a rate (a fraction per period: 0.1 is 10 %),
// such as a net present value or a future value less its target. The search
// looks at the whole range where rates mean something, from just above
// −100 % to 10,000 times the amount (10⁶ %) a period, on a fixed grid that
// is denser near 0: every step over which the value changes sign (or where
// it is exactly 0) holds a root, and each such root is narrowed down to
// full double precision (until the bracket is two adjacent doubles or
// narrower than 1e-12 of the rate). It assumes nothing about which way the
// value runs, so a borrower's flows (money in first), two roots, and rates
// above 100 % are all found. Two roots closer together than a grid step,
// or a value that only touches 0 between grid points, are not seen.
//
// Non-numbers (NaN) at a grid rate break the scan there: no bracket spans
// them. Infinities count with their sign. The work is bounded: one value
// per grid rate (about 500) and at most 200 steps per root.
namespace RootSearch {

struct Roots {
    // Every root found, from the lowest rate up.
    std::vector<double> all;
    // The value was exactly 0 at every grid rate: every rate is a root
    // (all amounts 0), which callers tell apart from "no root".
    bool everywhere = false;

    bool empty() const { return all.empty(); }
    // The root nearest `preferred`; NaN when there is none.
    double nearest(double preferred) const;
};

using Function = std::function<double(double rate)>;

// The lowest and highest rates a period the search covers.
inline constexpr double lowestRate = -1.0 + 1e-12;
inline constexpr double highestRate = 1e4;

Roots findRoots(const Function& value, double lowest = lowestRate, double highest = highestRate);

// The same for a value that has at most one root in the range: a sum of
// amounts times powers of (1 + rate) whose amounts, ordered by power,
// change sign once (Descartes' rule of signs bounds its roots above −100 %
// by that count), as nearly every investment's flows do. The scan then
// walks the same grid outward from `preferred` and stops at the first sign
// change, so it costs a few dozen values instead of the whole grid.
Roots findOnlyRoot(const Function& value, double preferred);

// How often the amounts change sign, in order, zeros skipped: by Descartes'
// rule of signs the most roots a sum of amount·(1 + rate)^power (powers in
// that order) can have above −100 %.
int signChanges(const std::vector<double>& amounts);

// The root between `low` and `high`, where the value's signs differ (or is
// 0 at one end), narrowed to full precision.
double refine(const Function& value, double low, double lowValue, double high, double highValue);

// Why a series of amounts has no rate that makes its present value 0, in
// one plain line: its amounts are all of one sign, or no rate in the range
// searched makes it 0. `name` is the rate's name ("IRR", "XIRR").
QString noRateReason(const QString& name, bool anyPositive, bool anyNegative);

// The rates a period at which `pv` and a level payment `pmt` (at the start
// of each period when `beginning`) grow to `fv` in `n` periods (money with
// one sign: FinanceMath::futureValueDifference). Over a whole number of
// periods that is a sum of amounts times powers of (1 + i): PV (and PMT in
// BEG mode) at the power n, PMT at n − 1 down to 1, PMT − FV (or −FV) at
// 0; when those change sign at most once, only one root is looked for.
Roots tvmRoots(double n, double pv, double pmt, double fv, bool beginning, double preferred);

// Why a TVM rate solve found no rate, in one plain line. `everywhere`: every
// rate fits the registers. When PV and FV were entered with opposite signs
// (as spreadsheets take them) and `solvable(pv, pmt, fv)` finds a rate for
// them with the same sign, the line says how to enter them instead.
QString noTvmRateReason(bool everywhere, double pv, double pmt, double fv,
                        const std::function<bool(double pv, double pmt, double fv)>& solvable);

} // namespace RootSearch
