#!/usr/bin/env python3
"""Exact amortization schedules in whole cents, for the cited test vectors.

Standard library only. Every amount is a Fraction; an amount rounded to
cents is rounded half away from zero (decimal's ROUND_HALF_UP) on its exact
value, so the interest 150,000.00 x 5.25 % / 24 = 328.125 becomes 328.13.

The rules, as a lender keeps a loan in cents:
- the rate per payment period is the annual rate / 100 / payments a year when
  interest compounds as often as payments are made (an exact fraction);
  otherwise (1 + r/c)^(c/p) - 1, which has no exact decimal: it is taken as
  the double the calculator computes (expm1 and log1p, as Python's math
  module has them from the same C library) and then as the exact decimal
  of that double's shortest text (repr), as the calculator does;
- the level payment is the annuity payment L i / (1 - (1 + i)^-n) (divided
  by 1 + i when payments are made at the start of each period; L / n at a
  zero rate), computed exactly and rounded to cents;
- each period's interest is the balance times the rate, rounded to cents;
  the first payment in BEG mode carries none;
- principal = payment - interest + extra; the last payment (the n-th, or
  the one whose principal reaches the balance) clears the balance to 0.00.

`old` reproduces the earlier binary rounding: llround(balance x 0.01 x i
x 100) on doubles, a tie going up or down by its binary value.

Usage:
  amortization_exact.py LOAN RATE YEARS PAYMENTS_A_YEAR [COMPOUNDING] [END|BEG] [EXTRA]
  amortization_exact.py --cases [ID ...]   the cases the vector file cites
  amortization_exact.py --search    100-year loans where the binary rounding is off
"""
import calendar
import datetime
import math
import sys
from decimal import ROUND_HALF_UP, Decimal
from fractions import Fraction


def to_cents(x):
    """x (a Fraction) in whole cents, half away from zero."""
    q = x * 100
    whole = q.numerator // q.denominator if q >= 0 else -((-q.numerator) // q.denominator)
    rest = abs(q - whole)
    if rest * 2 >= 1:
        whole += 1 if q >= 0 else -1
    return whole


def cents_text(c):
    return str((Decimal(c) / 100).quantize(Decimal("0.01"), rounding=ROUND_HALF_UP))


def rate_per_period(rate, p, c):
    r = Fraction(Decimal(rate))
    if c == p:
        return r / 100 / p
    i = math.expm1((c / p) * math.log1p(float(rate) / 100 / c))
    return Fraction(Decimal(repr(i)))


def schedule(loan, rate, years, p, c=None, mode="END", extra="0"):
    c = p if c is None else c
    n = round(Fraction(Decimal(years)) * p)
    i = rate_per_period(rate, p, c)
    L = Fraction(Decimal(loan))
    if i == 0:
        level = L / n
    else:
        level = L * i / (1 - (1 + i) ** -n)
        if mode == "BEG":
            level /= 1 + i
    if n == 1:
        level = L if mode == "BEG" else L + to_cents(L * i) / Fraction(100)
    payment = to_cents(level)
    extra_c = to_cents(Fraction(Decimal(extra)))
    balance = to_cents(L)
    rows = []
    for k in range(1, n + 1):
        if balance <= 0:
            break
        interest = 0 if (mode == "BEG" and k == 1) else to_cents(balance * i / 100)
        principal = payment - interest + extra_c
        if principal >= balance or k == n:
            principal = balance
        balance -= principal
        rows.append((k, principal + interest, interest, principal, balance))
    return payment, rows


def old_total_interest(loan, rate, years, p):
    """The earlier code's total interest (compounding as often as payments)."""
    n = round(float(years) * p)
    i = math.expm1(1.0 * math.log1p(float(rate) / 100 / p))
    llround = lambda x: int(Decimal(x).quantize(Decimal(1), rounding=ROUND_HALF_UP))
    level = float(loan) * i / -math.expm1(-n * math.log1p(i))
    pay = llround(level * 100)
    bal = llround(float(loan) * 100)
    total = 0
    for k in range(1, n + 1):
        if bal <= 0:
            break
        interest = llround(bal * 0.01 * i * 100)
        principal = pay - interest
        if principal >= bal or k == n:
            principal = bal
        bal -= principal
        total += interest
    return total


def payment_dates(first, p, count):
    """The dates of `count` payments from `first` (a datetime.date).

    Weekly and biweekly step 7 and 14 days; semimonthly (24) falls on the
    first date's day and 14 days later in each month: the 1st to 14th and 14
    days later; the 15th (or a month's last day) and the month's last day;
    from the 16th on, the first date is the later day and the earlier is 14
    days before it, the later day cut to a shorter month's last day. The
    other frequencies step 12/p months, the day cut to the month's end.
    Dates are (year, month, day): a million payments end past the year 9999
    that datetime stops at.
    """
    def month_plus(year, month, k):
        t = month - 1 + k
        return year + t // 12, t % 12 + 1

    def last_day(year, month):
        return calendar.monthrange(year, month)[1]

    out = []
    for k in range(count):
        if p in (52, 26):
            d = first + datetime.timedelta(days=(7 if p == 52 else 14) * k)
            out.append((d.year, d.month, d.day))
        elif p == 24:
            d = first.day
            month_end = d == last_day(first.year, first.month)
            if d <= 14:
                pair, start = (d, d + 14), 0
            elif d == 15 or month_end:
                pair, start = (15, 31), 0 if d == 15 else 1
            else:
                pair, start = (d - 14, d), 1
            j = k + start
            y, m = month_plus(first.year, first.month, j // 2)
            day = pair[0] if j % 2 == 0 else min(pair[1], last_day(y, m))
            out.append((y, m, day))
        else:
            y, m = month_plus(first.year, first.month, k * (12 // p))
            out.append((y, m, min(first.day, last_day(y, m))))
    return out


def summary(case):
    c = dict(case)
    first = c.pop("first", None)
    start, end = c.pop("range", (1, 12))
    payment, rows = schedule(**c)
    line = {
        "payment": cents_text(payment),
        "firstInterest": cents_text(rows[0][2]),
        "numberOfPayments": len(rows),
        "totalInterest": cents_text(sum(r[2] for r in rows)),
        "totalPaid": cents_text(sum(r[1] for r in rows)),
        "lastPayment": cents_text(rows[-1][1]),
        "rangePrincipal": cents_text(sum(r[3] for r in rows[start - 1:end])),
        "rangeInterest": cents_text(sum(r[2] for r in rows[start - 1:end])),
        "rangeBalance": cents_text(rows[min(end, len(rows)) - 1][4]),
    }
    if first:
        dates = payment_dates(datetime.date.fromisoformat(first), c["p"], len(rows))
        line["payoffDate"] = "%04d-%02d-%02d" % dates[-1]
    return line


# The cases tests/vectors/amortization.jsonl cites, by id.
CASES = {
    "semimonthly-tie": dict(loan="150000", rate="5.25", years="15", p=24, first="2027-01-01", range=(1, 1)),
    "hundred-years": dict(loan="300000", rate="5.625", years="100", p=12),
    "semiannual-compounding": dict(loan="250000", rate="4.5", years="25", p=12, c=2),
    "beg-mode": dict(loan="20000", rate="7.25", years="5", p=12, mode="BEG"),
    "extra-principal": dict(loan="100000", rate="6", years="10", p=12, extra="250", first="2027-03-31"),
    "zero-rate-tie": dict(loan="1000.05", rate="0", years="2", p=1),
    "single-payment-tie": dict(loan="1000", rate="0.0125", years="1", p=1),
    "million-payments": dict(loan="1000000", rate="0", years="1000000", p=1, first="2027-01-01"),
    "semimonthly-1st": dict(loan="1000", rate="6", years="0.0834", p=24, first="2027-01-01"),
    "semimonthly-15th": dict(loan="1000", rate="6", years="1", p=24, first="2027-01-15"),
    "semimonthly-20th": dict(loan="1000", rate="6", years="1", p=24, first="2027-01-20"),
    "semimonthly-month-end": dict(loan="1000", rate="6", years="1", p=24, first="2027-01-31"),
    "semimonthly-30th-leap": dict(loan="1000", rate="6", years="0.125", p=24, first="2028-01-30"),
    "thirty-years-monthly": dict(loan="200000", rate="6.5", years="30", p=12, first="2027-01-01"),
    "thirty-years-weekly": dict(loan="300000", rate="5", years="30", p=52),
    "range-of-the-second-year": dict(loan="200000", rate="6.5", years="30", p=12, range=(13, 24)),
    "beg-first-payment-at-once": dict(loan="200000", rate="6.5", years="30", p=12, mode="BEG"),
    "extra-payments-end-early": dict(loan="200000", rate="6.5", years="30", p=12, extra="200"),
}


def main(argv):
    if argv[:1] == ["--cases"]:
        for name, case in CASES.items():
            if len(argv) > 1 and name not in argv[1:]:
                continue
            line = summary(case)
            if case.get("c", case["p"]) == case["p"] and case.get("mode", "END") == "END" \
                    and case.get("extra", "0") == "0" and case["rate"] != "0":
                old = old_total_interest(case["loan"], case["rate"], case["years"], case["p"])
                line["oldTotalInterest"] = cents_text(old)
            print(name, line)
        return 0
    if argv[:1] == ["--search"]:
        for rate in ("3.75", "4.5", "5.25", "5.625", "6.75", "7.5"):
            for loan in ("100000", "150000", "200000", "300000"):
                for p in (12, 24):
                    exact = sum(r[2] for r in schedule(loan, rate, "100", p)[1])
                    old = old_total_interest(loan, rate, "100", p)
                    if exact != old:
                        print(loan, rate, p, cents_text(exact), cents_text(old))
        return 0
    if len(argv) < 4:
        print(__doc__)
        return 1
    names = ["loan", "rate", "years", "p", "c", "mode", "extra"]
    case = dict(zip(names, argv))
    case["p"] = int(case["p"])
    if "c" in case:
        case["c"] = int(case["c"])
    print(summary(case))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
