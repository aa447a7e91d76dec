#!/usr/bin/env python3
"""Exact amortization schedules in whole cents, for the cited test vectors.

Standard library only. Every amount is a Fraction; an amount rounded to
cents is rounded half away from zero (decimal's ROUND_HALF_UP) on its exact
value, so the interest 150,000.00 x 5.25 % / 24 = 328.125 becomes 328.13.

The rules, as a lender keeps a loan in cents:
- n = years x payments a year, rounded half away from zero;
- the rate per payment period is the annual rate / 100 / payments a year when
  interest compounds as often as payments are made (an exact fraction);
  otherwise (1 + r/c)^(c/p) - 1, which has no exact decimal: it is taken as
  the double the calculator computes (expm1 and log1p, as Python's math
  module has them from the same C library) and then as the exact decimal
  of that double's shortest text (repr), as the calculator does;
- the level payment of a balance B over m payments at the rate i (the
  annuity) is B i / (1 - (1 + i)^-m) (divided by 1 + i when payments are
  made at the start of each period; B / m at a zero rate; B and one period's
  interest when one payment is left, B alone at the start of a period),
  computed exactly and rounded to cents. The calculator works this one out
  in doubles; where the two round to different cents (a knife edge), the
  case list prints a warning;
- each period's interest is the balance times that period's rate, rounded
  to cents; the first payment in BEG mode carries none;
- principal = payment - interest + extra; the last payment (the n-th, or
  the one whose principal reaches the balance) clears the balance to 0.00.

Loans that change (payment k = 1, 2, ...):
- a one-time extra "K:A" adds A to the principal of payment K (several on
  one payment add up); a rate change "K:R" sets the annual rate R % from
  payment K on. K is a payment number, or a date YYYY-MM-DD for the first
  payment dated on or after it (with a first payment date);
- interest only N: the first N payments are their period's interest alone;
  the level payment is first worked out at payment N + 1, over the n - N
  payments left;
- the level payment is worked out again over the payments left (n - k + 1)
  at a payment where the rate changes, after any interest-only period; and,
  with "Lower payment", after a payment with a one-time extra that leaves a
  balance, for the payments after it (n - k left). The every-payment extra
  never changes it; "Shorten term" keeps it and the loan ends sooner;
- a balloon at K (K < n): payment K is that period's interest and the whole
  balance;
- the Extra column is the every-payment extra and the one-time extras, at
  most that payment's principal;
- --solve term: the level payment P is given and never worked out again; the
  payments go on until the balance is 0, refused when P is less than the
  interest of the first payment after any interest-only period, or when more
  than 1,000,000 payments would be needed;
- payment: the level payment at the first payment after any interest-only
  period (P with --solve term);
- interestSaved: the total interest of the same loan without the every-
  payment extra, one-time extras, rate changes, interest only and balloon,
  minus the total interest (negative when the loan costs more);
- apr: 100 p r, where r solves  sum payment_k / (1 + r)^t_k = loan - fees,
  t_k = k (END) or k - 1 (BEG), payment_k the schedule's payments; solved by
  bisection on 60-digit decimals (no APR when the fees reach the loan);
- the event of a payment, its parts joined by "; " in this order:
  "Rate R %" (the rate changes there), "Payment X" (the first payment at a
  level worked out again; not the first payment of the loan), "Interest
  only", "Extra A" (the sum of that payment's one-time extras, as entered),
  "Balloon".

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
from decimal import ROUND_HALF_UP, Decimal, localcontext
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


def half_away(x):
    """The whole number nearest to the Fraction x, a half away from zero."""
    whole = math.floor(abs(x) + Fraction(1, 2))
    return whole if x >= 0 else -whole


def percent_text(rate):
    """A rate as entered, without trailing zeros: "7.50" -> "7.5"."""
    return format(Decimal(rate).normalize(), "f")


MAX_PAYMENTS = 1000000


def annuity(balance, i, m, mode="END"):
    """The level payment in cents of `balance` cents over m payments at i."""
    b = Fraction(balance, 100)
    if m == 1:
        return balance if mode == "BEG" else balance + to_cents(b * i)
    if i == 0:
        return to_cents(b / m)
    level = b * i / (1 - (1 + i) ** -m)
    if mode == "BEG":
        level /= 1 + i
    return to_cents(level)


def annuity_in_doubles(balance, i, m, mode="END"):
    """annuity() as the calculator computes it, in doubles (None where it
    has no formula in doubles)."""
    if m == 1 or i == 0:
        return None
    x = float(i)
    level = balance / 100 * x / -math.expm1(-m * math.log1p(x))
    if mode == "BEG":
        level /= 1 + x
    return to_cents(Fraction(Decimal(repr(level))))


def parse_events(text):
    """"K:V,K:V" -> [(K, V)] as texts; K a payment number or a date."""
    out = []
    for item in (text or "").split(","):
        if item.strip():
            when, value = item.rsplit(":", 1)
            out.append((when.strip(), value.strip()))
    return out


def amortize(loan, rate, years=None, p=12, c=None, mode="END", extra="0",
             extras="", after="Shorten term", rate_changes="", interest_only=0,
             balloon_at=0, payment=None, fees="0", first=None, warnings=None):
    """The schedule and its results; `payment` given means --solve term.

    Returns a dict: rows (dicts: period, date, payment, interest, principal,
    balance, extra in cents, event), payment (cents or None), note (why no
    schedule, or None). Amounts are whole cents (ints).
    """
    c = p if c is None else c
    term_mode = payment is not None
    n = None if term_mode else half_away(Fraction(Decimal(years)) * p)
    limit = MAX_PAYMENTS if term_mode else n
    first_date = datetime.date.fromisoformat(first) if first else None

    def payment_number(when):
        """K of an event: its number, or the first payment on or after a date."""
        if "-" not in when:
            return int(when)
        day = datetime.date.fromisoformat(when)
        target = (day.year, day.month, day.day)
        if first_date is None:
            raise ValueError("a dated event needs a first payment date")
        for k in range(1, limit + 1):
            if date_of(first_date, p, k) >= target:
                return k
        return None  # after the last payment: no effect

    one_time = {}
    for when, amount in parse_events(extras):
        k = payment_number(when)
        if k is not None:
            one_time[k] = one_time.get(k, 0) + to_cents(Fraction(Decimal(amount)))
    changes = {}
    for when, new_rate in parse_events(rate_changes):
        k = payment_number(when)
        if k is not None:
            changes[k] = new_rate
    change_at = sorted(changes)
    rates = {}

    def rate_at(k):
        """The rate per period in force at payment k (cached by its text)."""
        text = rate
        for start in change_at:
            if start <= k:
                text = changes[start]
        if text not in rates:
            rates[text] = rate_per_period(text, p, c)
        return rates[text]

    def level_payment(balance, i, m):
        level = annuity(balance, i, m, mode)
        other = annuity_in_doubles(balance, i, m, mode)
        if warnings is not None and other is not None and other != level:
            warnings.append("knife edge: the level payment %s exactly, %s in doubles"
                            % (cents_text(level), cents_text(other)))
        return level

    loan_c = to_cents(Fraction(Decimal(loan)))
    every = to_cents(Fraction(Decimal(extra)))
    n_io = int(interest_only)
    balloon = int(balloon_at)
    given = to_cents(Fraction(Decimal(payment))) if term_mode else None
    balance = loan_c
    level = given
    first_level = None
    recomputed = False  # a level worked out after the last payment, for this one
    rows = []
    for k in range(1, limit + 1):
        if balance <= 0:
            break
        i = rate_at(k)
        events = []
        if k in changes:
            events.append("Rate %s %%" % percent_text(changes[k]))
        if not term_mode:
            if k == 1 and n_io == 0:
                level = level_payment(loan_c, i, n)
            elif (n_io >= 1 and k == n_io + 1) or (k > n_io and k in changes):
                level = level_payment(balance, i, n - k + 1)
                recomputed = True
            if recomputed and k > 1:
                events.append("Payment " + cents_text(level))
        recomputed = False
        interest = 0 if (mode == "BEG" and k == 1) else to_cents(Fraction(balance, 100) * i)
        if k == n_io + 1:
            if term_mode and given < interest:
                return {"rows": [], "payment": None,
                        "note": "The payment does not cover the interest of a period."}
            first_level = level
        if k <= n_io:
            events.append("Interest only")
        scheduled = 0 if k <= n_io else level - interest
        once = one_time.get(k, 0)
        if once:
            events.append("Extra " + cents_text(once))
        paid_extra = every + once
        principal = scheduled + paid_extra
        if principal >= balance or k == n or k == balloon:
            principal = balance
            paid_extra = min(paid_extra, principal)
        if k == balloon and (term_mode or k < n):
            events.append("Balloon")
        balance -= principal
        rows.append({"period": k, "date": date_of(first_date, p, k) if first_date else None,
                     "payment": interest + principal, "interest": interest,
                     "principal": principal, "balance": balance, "extra": paid_extra,
                     "event": "; ".join(events)})
        if (after == "Lower payment" and not term_mode and once and balance > 0
                and k >= n_io and k < n):
            level = level_payment(balance, rate_at(k + 1), n - k)
            recomputed = True
    if balance > 0:
        return {"rows": [], "payment": None,
                "note": "More than 1,000,000 payments would be needed."}
    return {"rows": rows, "payment": given if term_mode else first_level,
            "note": None}


def apr(rows, loan, fees, p, mode="END"):
    """The annual percentage rate (percent, a Decimal) of the schedule's
    payments against the loan less the fees, or None when the fees reach
    the loan. Bisection on 60-digit decimals."""
    received = Fraction(Decimal(loan)) - Fraction(Decimal(fees))
    if received <= 0:
        return None
    with localcontext() as ctx:
        ctx.prec = 60
        target = Decimal(received.numerator) / Decimal(received.denominator)
        pays = [Decimal(r["payment"]) / 100 for r in rows]

        def value(r):
            """sum payment_k / (1 + r)^t_k, by Horner's rule from the last."""
            v = 1 / (1 + r)
            total = Decimal(0)
            for pay in reversed(pays):
                total = (total + pay) * v
            return total * (1 + r) if mode == "BEG" else total

        low, high = Decimal("-0.999999"), Decimal(1)
        for _ in range(200):  # the value falls as r rises
            if value(high) < target:
                break
            high *= 2
        for _ in range(200):
            mid = (low + high) / 2
            if value(mid) > target:
                low = mid
            else:
                high = mid
        return 100 * p * (low + high) / 2


def schedule(loan, rate, years, p, c=None, mode="END", extra="0"):
    """The level payment and rows (k, payment, interest, principal, balance)."""
    out = amortize(loan, rate, years, p, c, mode, extra)
    rows = [(r["period"], r["payment"], r["interest"], r["principal"], r["balance"])
            for r in out["rows"]]
    return out["payment"], rows


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


def date_of(first, p, k):
    """The date of payment k (from 1) when the first is `first` (a
    datetime.date), as (year, month, day).

    Weekly and biweekly step 7 and 14 days; semimonthly (24) falls on the
    first date's day and 14 days later in each month: the 1st to 14th and 14
    days later; the 15th (or a month's last day) and the month's last day;
    from the 16th on, the first date is the later day and the earlier is 14
    days before it, the later day cut to a shorter month's last day. The
    other frequencies step 12/p months, the day cut to the month's end.
    Dates are (year, month, day): a million payments end past the year 9999
    that datetime stops at.
    """
    def month_plus(year, month, steps):
        t = month - 1 + steps
        return year + t // 12, t % 12 + 1

    def last_day(year, month):
        return calendar.monthrange(year, month)[1]

    k -= 1
    if p in (52, 26):
        d = first + datetime.timedelta(days=(7 if p == 52 else 14) * k)
        return (d.year, d.month, d.day)
    if p == 24:
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
        return (y, m, day)
    y, m = month_plus(first.year, first.month, k * (12 // p))
    return (y, m, min(first.day, last_day(y, m)))


def payment_dates(first, p, count):
    """The dates of `count` payments from `first` (a datetime.date)."""
    return [date_of(first, p, k) for k in range(1, count + 1)]


# The inputs a case may give beyond the schedule of a fixed loan.
EVENT_KEYS = ("extras", "after", "rate_changes", "interest_only", "balloon_at", "payment",
              "fees")


def summary(case):
    c = dict(case)
    start, end = c.pop("range", (1, 12))
    show = c.pop("rows", ())
    warnings = []
    out = amortize(**c, warnings=warnings)
    rows = out["rows"]
    if not rows:
        return {"note": out["note"]}
    level = out["payment"]
    line = {
        "payment": cents_text(level) if level is not None else "NaN",
        "firstInterest": cents_text(rows[0]["interest"]),
        "numberOfPayments": len(rows),
        "totalInterest": cents_text(sum(r["interest"] for r in rows)),
        "totalPaid": cents_text(sum(r["payment"] for r in rows)),
        "lastPayment": cents_text(rows[-1]["payment"]),
        "rangePrincipal": cents_text(sum(r["principal"] for r in rows[start - 1:end])),
        "rangeInterest": cents_text(sum(r["interest"] for r in rows[start - 1:end])),
        "rangeBalance": cents_text(rows[min(end, len(rows)) - 1]["balance"]),
    }
    if c.get("first"):
        line["payoffDate"] = "%04d-%02d-%02d" % rows[-1]["date"]
    if any(key in c for key in EVENT_KEYS):
        plain = {key: c[key] for key in ("loan", "rate", "years", "p", "c", "mode", "payment")
                 if key in c}
        base = amortize(**plain)["rows"]
        saved = sum(r["interest"] for r in base) - sum(r["interest"] for r in rows)
        line["interestSaved"] = cents_text(saved) if base else "NaN"
        rate = apr(rows, c["loan"], c.get("fees", "0"), c["p"], c.get("mode", "END"))
        line["apr"] = "NaN" if rate is None else "%.12g" % rate
    for k in show:
        r = rows[k - 1] if k > 0 else rows[k]
        line["row %d" % r["period"]] = {
            "date": "%04d-%02d-%02d" % r["date"] if r["date"] else "",
            **{key: cents_text(r[key]) for key in ("payment", "interest", "principal", "extra",
                                                  "balance")},
            "event": r["event"]}
    if warnings:
        line["warnings"] = warnings
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
    # Loans that change; "rows" names the rows printed (-1 the last).
    "extra-once-shorten-term": dict(loan="200000", rate="6.5", years="30", p=12, first="2027-01-01",
                                    extras="12:20000", rows=(12, 13, -1)),
    "extra-once-lower-payment": dict(loan="200000", rate="6.5", years="30", p=12,
                                     first="2027-01-01", extras="12:20000",
                                     after="Lower payment", rows=(12, 13, -1)),
    "rate-change": dict(loan="200000", rate="6.5", years="30", p=12, rate_changes="61:7.5",
                        rows=(60, 61, -1)),
    "rate-change-semiannual-compounding": dict(loan="250000", rate="4.5", years="25", p=12, c=2,
                                               rate_changes="61:5.5", rows=(60, 61, -1)),
    "interest-only": dict(loan="200000", rate="6.5", years="30", p=12, interest_only=24,
                          rows=(1, 24, 25, -1)),
    "balloon": dict(loan="200000", rate="6.5", years="30", p=12, balloon_at=84, rows=(83, 84)),
    "term-from-payment": dict(loan="200000", rate="6.5", p=12, payment="1500", rows=(1, -2, -1)),
    "term-payment-below-interest": dict(loan="200000", rate="6.5", p=12, payment="1000"),
    "dated-extra": dict(loan="200000", rate="6.5", years="30", p=12, first="2027-01-31",
                        extras="2028-06-15:10000", rows=(17, 18, -1)),
    "extra-pays-off": dict(loan="10000", rate="6", years="1", p=12, extras="6:20000",
                           rows=(5, 6)),
    "fees-apr": dict(loan="200000", rate="6.5", years="30", p=12, fees="4000"),
    "fees-reach-the-loan": dict(loan="1000", rate="5", years="1", p=12, fees="1000"),
    # Appendix J to Part 1026 (Regulation Z), paragraph (c), examples with a
    # regular first period: no interest, so the payments are the published
    # ones; the fees are the finance charge, loan - fees the amount financed.
    "apr-regulation-z-c1i": dict(loan="5520", rate="0", years="2", p=12, fees="520",
                                 rows=(1, -1)),
    "apr-regulation-z-c2i": dict(loan="5540", rate="0", p=12, payment="230", extras="1:20",
                                 fees="540", rows=(1, 2, -1)),
    "apr-regulation-z-c3i": dict(loan="5570", rate="0", p=12, payment="230", balloon_at=24,
                                 fees="570", rows=(23, 24)),
    "apr-regulation-z-c4i": dict(loan="5590", rate="0", p=12, payment="230", extras="1:20",
                                 balloon_at=24, fees="590", rows=(1, 23, 24)),
    "interest-only-rate-extras-balloon": dict(loan="300000", rate="6", years="30", p=12,
                                              first="2027-02-28", interest_only=12,
                                              rate_changes="37:7.25",
                                              extras="24:10000,60:5000", balloon_at=120,
                                              rows=(12, 13, 24, 25, 37, 60, 119, 120)),
    "lower-payment-interest-only-dated-rate": dict(loan="150000", rate="5.25", years="15", p=12,
                                                   first="2027-01-15", interest_only=6,
                                                   after="Lower payment", extra="100",
                                                   extras="6:5000,30:3000,30:2000",
                                                   rate_changes="2029-01-01:6",
                                                   rows=(1, 6, 7, 25, 30, 31, -1)),
    "term-interest-only-rate-extra-balloon": dict(loan="100000", rate="7", p=12, payment="900",
                                                  interest_only=3, rate_changes="25:8",
                                                  extras="10:2000", balloon_at=120, fees="1500",
                                                  first="2027-03-31",
                                                  rows=(3, 4, 10, 25, 119, 120)),
}


def main(argv):
    if argv[:1] == ["--cases"]:
        for name, case in CASES.items():
            if len(argv) > 1 and name not in argv[1:]:
                continue
            line = summary(case)
            if case.get("c", case["p"]) == case["p"] and case.get("mode", "END") == "END" \
                    and case.get("extra", "0") == "0" and case["rate"] != "0" \
                    and not any(key in case for key in EVENT_KEYS):
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
