#!/usr/bin/env python3
"""Reference values for tests/vectors/growth.jsonl, margin.jsonl and the
MIRR, profitability index and payback cases of npv.jsonl, computed in
Python's decimal arithmetic with 50 significant digits from the formulas
alone (no code of the app). Run it to print every value by case name:

    python3 tests/vectors/reference/business.py
"""
from decimal import Decimal as D, getcontext

getcontext().prec = 50


def cagr(start, end, years):
    """(end / start)^(1 / years) - 1, in percent."""
    return ((D(end) / D(start)).ln() / D(years)).exp() * 100 - 100


def grown(start, rate, years):
    return D(start) * ((1 + D(rate) / 100).ln() * D(years)).exp()


def years(start, end, rate):
    return (D(end) / D(start)).ln() / (1 + D(rate) / 100).ln()


def mirr(flows, finance, reinvest):
    """The spreadsheet MIRR: inflows carried to the last flow at the
    reinvestment rate, outflows brought back to the first at the finance
    rate, n - 1 periods between them."""
    n = len(flows)
    f, r = 1 + D(finance) / 100, 1 + D(reinvest) / 100
    inflow = sum(D(c) * r ** (n - 1 - t) for t, c in enumerate(flows) if D(c) > 0)
    outflow = sum(D(c) / f ** t for t, c in enumerate(flows) if D(c) < 0)
    return ((inflow / -outflow).ln() / (n - 1)).exp() * 100 - 100


def payback(flows, rate=0):
    """Periods until the running sum is no longer negative, interpolated in
    the period where it turns."""
    total = D(0)
    for t, c in enumerate(flows):
        flow = D(c) / (1 + D(rate) / 100) ** t
        before, total = total, total + flow
        if total >= 0:
            return D(0) if t == 0 or before >= 0 else t - 1 - before / flow
    return None


def profitability_index(flows, rate):
    later = sum(D(c) / (1 + D(rate) / 100) ** t for t, c in enumerate(flows) if t > 0)
    return later / -D(flows[0])


CASES = {
    "cagr-1000-2000-10": cagr(1000, 2000, 10),
    "cagr-fraction-of-a-year": cagr(250, 180, "2.5"),
    "end-from-rate": grown(5000, 6, 15),
    "start-from-rate": D(10000) / ((1 + D(4) / 100).ln() * 8).exp(),
    "years-to-double-at-7": years(1, 2, 7),
    "margin-cost-60-margin-25-price": D(60) / (1 - D(25) / 100),
    "mirr-five-years": mirr([-120000, 39000, 30000, 21000, 37000, 46000], 10, 12),
    "mirr-three-years": mirr([-120000, 39000, 30000, 21000], 10, 12),
    "mirr-reinvest-14": mirr([-120000, 39000, 30000, 21000, 37000, 46000], 10, 14),
    "issue-example-mirr": mirr([-1000, 300, 400, 500, 200], 10, 12),
    "issue-example-pi": profitability_index([-1000, 300, 400, 500, 200], 10),
    "issue-example-payback": payback([-1000, 300, 400, 500, 200]),
    "issue-example-discounted-payback": payback([-1000, 300, 400, 500, 200], 10),
}

if __name__ == "__main__":
    for name, value in CASES.items():
        print(f"{name}: {value:.20g}" if value is not None else f"{name}: none")
