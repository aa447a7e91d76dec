#!/usr/bin/env python3
"""Reference values for the dated-bond, day-count and dated-cash-flows-basis
cases, computed independently of the app in Python's decimal arithmetic
(50 significant digits) from the spreadsheet functions' definitions:

  coupon dates   back from maturity in 12/f-month steps, each from maturity
                 itself; a maturity on its month's last day puts every
                 coupon on its month's last day
  A, E, DSC, N   COUPDAYBS (DAYS360 US/European on the 30/360 bases, else
                 calendar days), COUPDAYS (360/f, 365/f on Actual/365,
                 calendar days of the period on Actual/actual), COUPDAYSNC
                 (E - A on the 30/360 bases), COUPNUM
  PRICE          sum of C/(1+r)^(k-1+DSC/E) + R/(1+r)^(N-1+DSC/E) - C*A/E,
                 or with N = 1 (R+C)/(1+DSC/E*r) - C*A/E
  YIELD          bisection of PRICE (N > 1) or its closed form (N = 1)
  DURATION       sum t*P*(1+r)^-t / sum P*(1+r)^-t / f, t in periods
  convexity      sum t(t+1)*P*(1+r)^-(t+2) / sum P*(1+r)^-t / f^2
  YEARFRAC       the five bases, actual/actual by its one-year and
                 average-year-length rules

Run it to print every case's values:

    python3 tests/vectors/reference/bonds.py [CASE ...]
"""
import calendar
import sys
from datetime import date, timedelta
from decimal import Decimal as D, getcontext

getcontext().prec = 50

US, ACTACT, ACT360, ACT365, EU = range(5)


def last_of_month(d):
    return d.day == calendar.monthrange(d.year, d.month)[1]


def add_months(d, months):
    total = d.year * 12 + (d.month - 1) + months
    y, m = divmod(total, 12)
    m += 1
    last = calendar.monthrange(y, m)[1]
    return date(y, m, last if last_of_month(d) else min(d.day, last))


def days360(a, b, european):
    d1, d2 = a.day, b.day
    if european:
        d1, d2 = min(d1, 30), min(d2, 30)
    else:
        if d1 == 31 or (a.month == 2 and last_of_month(a)):
            d1 = 30
        if d2 == 31 and d1 == 30:
            d2 = 30
    return (b.year - a.year) * 360 + (b.month - a.month) * 30 + d2 - d1


def yearfrac(a, b, basis):
    if b < a:
        a, b = b, a
    if a == b:
        return D(0)
    days = D((b - a).days)
    if basis == US:
        d1, d2 = a.day, b.day
        feb_a = a.month == 2 and last_of_month(a)
        feb_b = b.month == 2 and last_of_month(b)
        if d1 == 31 and d2 == 31:
            d1 = d2 = 30
        elif d1 == 31:
            d1 = 30
        elif d1 == 30 and d2 == 31:
            d2 = 30
        elif feb_a and feb_b:
            d1 = d2 = 30
        elif feb_a:
            d1 = 30
        return D((b.year - a.year) * 360 + (b.month - a.month) * 30 + d2 - d1) / 360
    if basis == ACT360:
        return days / 360
    if basis == ACT365:
        return days / 365
    if basis == EU:
        return D(days360(a, b, True)) / 360
    # Actual/actual
    within = a.year == b.year or (
        b.year == a.year + 1 and (a.month, a.day) >= (b.month, b.day))
    if within:
        def leap_day_between():
            for y in {a.year, b.year}:
                if calendar.isleap(y) and a <= date(y, 2, 29) <= b:
                    return True
            return False
        leap = (a.year == b.year and calendar.isleap(a.year)) or leap_day_between()
        return days / (366 if leap else 365)
    spanned = D((date(b.year + 1, 1, 1) - date(a.year, 1, 1)).days)
    return days / (spanned / (b.year - a.year + 1))


def period(settle, mat, f, basis):
    step = 12 // f
    k = 1
    while add_months(mat, -k * step) > settle:
        k += 1
    prev, nxt = add_months(mat, -k * step), add_months(mat, -(k - 1) * step)
    if basis in (US, EU):
        a = D(days360(prev, settle, basis == EU))
    else:
        a = D((settle - prev).days)
    e = {ACTACT: D((nxt - prev).days), ACT365: D(365) / f}.get(basis, D(360) / f)
    dsc = e - a if basis in (US, EU) else D((nxt - settle).days)
    return prev, nxt, k, a, e, dsc


def flows(settle, mat, rate, redemption, f, basis):
    _, _, n, a, e, dsc = period(settle, mat, f, basis)
    c = D(100) * D(str(rate)) / f
    return [(k - 1 + dsc / e, c + (D(str(redemption)) if k == n else 0))
            for k in range(1, n + 1)], c * a / e


def price(settle, mat, rate, yld, redemption, f, basis):
    _, _, n, a, e, dsc = period(settle, mat, f, basis)
    r = D(str(yld)) / f
    c = D(100) * D(str(rate)) / f
    if n == 1:
        return (D(str(redemption)) + c) / (1 + dsc / e * r) - c * a / e
    payments, accrued = flows(settle, mat, rate, redemption, f, basis)
    return sum(p / (1 + r) ** t for t, p in payments) - accrued


def yield_(settle, mat, rate, pr, redemption, f, basis, low=-0.5, high=2):
    low, high = D(str(low)), D(str(high))
    target = D(str(pr))
    for _ in range(300):
        mid = (low + high) / 2
        if price(settle, mat, rate, mid, redemption, f, basis) > target:
            low = mid
        else:
            high = mid
    return (low + high) / 2


def duration(settle, mat, rate, yld, redemption, f, basis):
    payments, _ = flows(settle, mat, rate, redemption, f, basis)
    r = D(str(yld)) / f
    value = sum(p / (1 + r) ** t for t, p in payments)
    mac = sum(t * p / (1 + r) ** t for t, p in payments) / value / f
    conv = sum(t * (t + 1) * p / (1 + r) ** (t + 2) for t, p in payments) / value / f / f
    return mac, mac / (1 + r), conv


def bond(settle, mat, rate, yld, redemption, f, basis, pr=None, call=None):
    """Every value the dated-bond calculator gives (yield and rate in %)."""
    prev, nxt, n, a, e, dsc = period(settle, mat, f, basis)
    rate, yld = D(str(rate)) / 100, None if yld is None else D(str(yld)) / 100
    if yld is None:
        yld = yield_(settle, mat, rate, pr, redemption, f, basis)
    else:
        pr = price(settle, mat, rate, yld, redemption, f, basis)
    pr = D(str(pr))
    accrued = D(100) * rate / f * a / e
    mac, mod, conv = duration(settle, mat, rate, yld, redemption, f, basis)
    out = dict(price=pr, yield_=yld * 100, accruedInterest=accrued, dirtyPrice=pr + accrued,
               macaulayDuration=mac, modifiedDuration=mod, convexity=conv,
               previousCouponDate=prev.isoformat(), nextCouponDate=nxt.isoformat(),
               daysFromPrevious=a, daysInPeriod=e, daysToNext=dsc, couponsRemaining=n)
    if call:
        out['yieldToCall'] = yield_(settle, call[0], rate, pr, call[1], f, basis) * 100
    return out


def xirr_two(days_or_years, growth):
    """The rate at which -1 now grows to `growth` after `days_or_years` years."""
    return (D(str(growth)) ** (1 / D(days_or_years)) - 1) * 100


d = date.fromisoformat
CASES = {
    'price-documented': lambda: bond(d('2008-02-15'), d('2017-11-15'), 5.75, 6.5, 100, 2, US),
    'yield-documented': lambda: bond(d('2008-02-15'), d('2016-11-15'), 5.75, None, 100, 2, US,
                                     pr=95.04287),
    'call': lambda: bond(d('2008-02-15'), d('2017-11-15'), 5.75, 6.5, 100, 2, US,
                         call=(d('2012-11-15'), 102)),
    'one-period-left': lambda: bond(d('2008-02-15'), d('2008-05-15'), 5.75, 6.5, 100, 2, US),
    'eom-feb28-quarterly': lambda: bond(d('2024-10-15'), d('2027-02-28'), 4, 5, 100, 4, ACTACT),
    'eom-feb29-semiannual': lambda: bond(d('2023-12-01'), d('2028-02-29'), 6, 5, 100, 2, US),
    'eom-31st-semiannual': lambda: bond(d('2025-10-31'), d('2030-03-31'), 5, 5, 100, 2, EU),
    'day-30-no-eom': lambda: bond(d('2025-03-10'), d('2030-08-30'), 5, 4, 100, 2, ACT360),
    'zero-coupon': lambda: bond(d('2021-05-20'), d('2031-03-01'), 0, 5, 100, 1, ACTACT),
    'basis-0': lambda: bond(d('2024-03-31'), d('2034-08-31'), 4.5, 5.25, 100, 2, US),
    'basis-1': lambda: bond(d('2024-03-31'), d('2034-08-31'), 4.5, 5.25, 100, 2, ACTACT),
    'basis-2': lambda: bond(d('2024-03-31'), d('2034-08-31'), 4.5, 5.25, 100, 2, ACT360),
    'basis-3': lambda: bond(d('2024-03-31'), d('2034-08-31'), 4.5, 5.25, 100, 2, ACT365),
    'basis-4': lambda: bond(d('2024-03-31'), d('2034-08-31'), 4.5, 5.25, 100, 2, EU),
    'annual-redemption-105': lambda: bond(d('2024-07-01'), d('2031-01-15'), 3, 3.5, 105, 1,
                                          ACT365),
    'quarterly-from-price': lambda: bond(d('2024-07-01'), d('2031-01-15'), 6, None, 100, 4,
                                         ACTACT, pr=103.25),
    'yearfrac-actual-multi-year': lambda: yearfrac(d('2020-06-15'), d('2023-03-01'), ACTACT),
    'yearfrac-actual-leap-within-a-year': lambda: yearfrac(d('2023-06-01'), d('2024-05-31'),
                                                           ACTACT),
    'xirr-basis-actual360': lambda: xirr_two(D(366) / 360, 1.1),
    'xirr-basis-actual365': lambda: xirr_two(D(366) / 365, 1.1),
}


if __name__ == '__main__':
    for name in sys.argv[1:] or CASES:
        value = CASES[name]()
        if isinstance(value, dict):
            print(name)
            for key, v in value.items():
                print('   ', key, v if isinstance(v, str) else format(float(v), '.17g'))
        else:
            print(name, format(float(value), '.17g'))
