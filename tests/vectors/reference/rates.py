#!/usr/bin/env python3
"""Reference rates for tests/vectors/rates.jsonl and tvm.jsonl, computed
independently of the app: each root is bracketed by hand and bisected in
Python's decimal arithmetic with 50 significant digits, far beyond what a
double holds. Run it to print every reference value:

    python3 tests/vectors/reference/rates.py
"""
from decimal import Decimal as D, getcontext

getcontext().prec = 50


def bisect(f, low, high, steps=400):
    low, high = D(low), D(high)
    f_low = f(low)
    for _ in range(steps):
        mid = (low + high) / 2
        f_mid = f(mid)
        if f_mid == 0:
            return mid
        if (f_mid < 0) == (f_low < 0):
            low, f_low = mid, f_mid
        else:
            high = mid
    return (low + high) / 2


def npv(flows, x):
    return sum(D(str(c)) / (1 + x) ** t for t, c in enumerate(flows))


def tvm_fv(i, n, pv, pmt, beginning):
    g = (1 + i) ** n
    due = (1 + i) if beginning else 1
    return D(str(pv)) * g + D(str(pmt)) * due * (g - 1) / i


def tvm_rate(n, pv, pmt, fv, per_year, beginning, low, high):
    """Annual rate in percent: the per-period root times payments a year."""
    i = bisect(lambda i: tvm_fv(i, n, pv, pmt, beginning) - D(str(fv)), low, high)
    return i * per_year * 100


CASES = {
    # IRR of a 1000 loan repaid by ten payments of 150 (per period, fraction)
    "irr-1000-150x10": bisect(lambda x: npv([1000] + [-150] * 10, x), "0.05", "0.1"),
    # IRR of -1000, 300, 400, 500 (percent a period)
    "irr-1000-300-400-500": 100 * bisect(lambda x: npv([-1000, 300, 400, 500], x), "0.05", "0.1"),
    # IRR of the spreadsheet function's example, five years and four (percent)
    "irr-70000-5-years": 100 * bisect(
        lambda x: npv([-70000, 12000, 15000, 18000, 21000, 26000], x), "0.05", "0.1"),
    "irr-70000-4-years": 100 * bisect(
        lambda x: npv([-70000, 12000, 15000, 18000, 21000], x), "-0.1", "0"),
    # IRR of -5000 and 98 flows of 100 (percent)
    "irr-5000-100x98": 100 * bisect(lambda x: npv([-5000] + [100] * 98, x), "0.001", "0.05"),
    # TVM: 8000 repaid by 48 monthly payments of 200
    "tvm-8000-200x48": tvm_rate(48, 8000, -200, 0, 12, False, "0.005", "0.01"),
    # TVM: a 250,000 mortgage at a payment of -1498.8764 over 360 months
    "tvm-mortgage": tvm_rate(360, 250000, "-1498.8764", 0, 12, False, "0.004", "0.006"),
    # TVM: 1000 to 900 in 5 years
    "tvm-1000-to-900": tvm_rate(5, 1000, 0, 900, 1, False, "-0.05", "-0.01"),
    # TVM: BEG, 10000 and -1200 a year over 12 years to 0
    "tvm-beg-10000-1200": tvm_rate(12, 10000, -1200, 0, 1, True, "0.05", "0.1"),
    # TVM: 1000 to 2000 over 100,000 months
    "tvm-1000-2000-100000-months": tvm_rate(100000, 1000, 0, 2000, 12, False, "1e-7", "1e-5"),
    # TVM: 0.0001 to 0.0002 in 10 years
    "tvm-tiny-amounts": tvm_rate(10, "0.0001", 0, "0.0002", 1, False, "0.05", "0.1"),
}

if __name__ == "__main__":
    for name, value in CASES.items():
        print(f"{name}: {value:.25}")
