#!/usr/bin/env python3
"""Reference values for the statistics cases, computed independently of the
app in Python's decimal arithmetic (50 significant digits) from the
textbook definitions:

  mean           sum / n
  sample SD      sqrt(sum((v - mean)^2) / (n - 1))
  population SD  sqrt(sum((v - mean)^2) / n)
  least squares  b = Sxy / Sxx, intercept = mean(Y) - b * mean(X),
                 r = Sxy / sqrt(Sxx * Syy), of X, Y the transformed values:
                   Linear       X = x,    Y = y,    a = intercept
                   Logarithmic  X = ln x, Y = y,    a = intercept
                   Exponential  X = x,    Y = ln y, a = e^intercept
                   Power        X = ln x, Y = ln y, a = e^intercept
  predictions    y from x on the curve; x from y by its inverse:
                   (y - a)/b, e^((y - a)/b), ln(y/a)/b, (y/a)^(1/b)

The data are typed here as decimal texts, as a user types them, so each
value is the decimal number itself (not its nearest double).

Run it to print every case's values (or those of the cases named):

    python3 tests/vectors/reference/statistics.py [CASE ...]
"""
import sys
from decimal import Decimal as D, getcontext

getcontext().prec = 50

# Anscombe, F. J. (1973), "Graphs in Statistical Analysis", The American
# Statistician 27 (1): 17-21, table 1.
ANSCOMBE_X = "10 8 13 9 11 14 6 4 12 7 5"
ANSCOMBE_X4 = "8 8 8 8 8 8 8 19 8 8 8"
ANSCOMBE_Y = [
    "8.04 6.95 7.58 8.81 8.33 9.96 7.24 4.26 10.84 4.82 5.68",
    "9.14 8.14 8.74 8.77 9.26 8.10 6.13 3.10 9.13 7.26 4.74",
    "7.46 6.77 12.74 7.11 7.81 8.84 6.08 5.39 8.15 6.42 5.73",
    "6.58 5.76 7.71 8.84 8.47 7.04 5.25 12.50 5.56 7.91 6.89",
]
# NIST Statistical Reference Datasets, linear regression, Norris (lower
# difficulty): 36 observations of a calibration of ozone monitors.
NORRIS_X = ("0.2 337.4 118.2 884.6 10.1 226.5 666.3 996.3 448.6 777.0 558.2 0.4 0.6 775.5 "
            "666.9 338.0 447.5 11.6 556.0 228.1 995.8 887.6 120.2 0.3 0.3 556.8 339.1 887.2 "
            "999.0 779.0 11.1 118.3 229.2 669.1 448.9 0.5")
NORRIS_Y = ("0.1 338.8 118.1 888.0 9.2 228.1 668.5 998.5 449.1 778.9 559.2 0.3 0.1 778.1 "
            "668.8 339.3 448.9 10.8 557.7 228.3 998.0 888.8 119.6 0.3 0.6 557.6 339.3 888.0 "
            "998.5 778.9 10.2 117.6 228.9 668.4 449.2 0.2")
# Small sets for the curves: growth that roughly doubles, a power law with
# noise, a slowing rise.
GROWTH_X = "1 2 3 4 5 6"
GROWTH_Y = "3.1 6.2 11.9 25.3 49.6 101.2"
POWER_X = "1 2 4 8 16"
POWER_Y = "2.1 5.9 17.2 44.8 130.5"
SLOW_X = "1 2 3 5 8 13 21"
SLOW_Y = "2.0 3.4 4.3 5.2 6.1 7.0 7.9"

CASES = {
    "anscombe-1": ("Linear", ANSCOMBE_X, ANSCOMBE_Y[0], None, None),
    "anscombe-2": ("Linear", ANSCOMBE_X, ANSCOMBE_Y[1], None, None),
    "anscombe-3": ("Linear", ANSCOMBE_X, ANSCOMBE_Y[2], None, None),
    "anscombe-4": ("Linear", ANSCOMBE_X4, ANSCOMBE_Y[3], None, None),
    "norris": ("Linear", NORRIS_X, NORRIS_Y, "500", "500"),
    "exponential": ("Exponential", GROWTH_X, GROWTH_Y, "7", "200"),
    "power": ("Power", POWER_X, POWER_Y, "32", "400"),
    "logarithmic": ("Logarithmic", SLOW_X, SLOW_Y, "34", "9"),
    "linear-on-growth": ("Linear", GROWTH_X, GROWTH_Y, "7", "200"),
    "example": ("Linear", "1 2 3 4", "2 4.1 5.9 8.2", "5", "10"),
}


def ln(v):
    return v.ln()


def fit(model, xs, ys):
    tx = [ln(x) if model in ("Logarithmic", "Power") else x for x in xs]
    ty = [ln(y) if model in ("Exponential", "Power") else y for y in ys]
    n = D(len(tx))
    mx = sum(tx) / n
    my = sum(ty) / n
    sxx = sum((x - mx) ** 2 for x in tx)
    syy = sum((y - my) ** 2 for y in ty)
    sxy = sum((x - mx) * (y - my) for x, y in zip(tx, ty))
    b = sxy / sxx
    intercept = my - b * mx
    r = sxy / (sxx * syy).sqrt()
    a = intercept.exp() if model in ("Exponential", "Power") else intercept
    return a, b, r


def predict_y(model, a, b, x):
    return {"Linear": lambda: a + b * x,
            "Logarithmic": lambda: a + b * ln(x),
            "Exponential": lambda: a * (b * x).exp(),
            "Power": lambda: a * (b * ln(x)).exp()}[model]()


def predict_x(model, a, b, y):
    return {"Linear": lambda: (y - a) / b,
            "Logarithmic": lambda: ((y - a) / b).exp(),
            "Exponential": lambda: ln(y / a) / b,
            "Power": lambda: (ln(y / a) / b).exp()}[model]()


def summary(values):
    n = D(len(values))
    mean = sum(values) / n
    squares = sum((v - mean) ** 2 for v in values)
    return {"mean": mean, "sample": (squares / (n - 1)).sqrt(),
            "population": (squares / n).sqrt(), "sum": sum(values),
            "sum2": sum(v * v for v in values)}


def values(case):
    model, xtext, ytext, px, py = CASES[case]
    xs = [D(t) for t in xtext.split()]
    ys = [D(t) for t in ytext.split()]
    sx, sy = summary(xs), summary(ys)
    a, b, r = fit(model, xs, ys)
    out = {"n": len(xs), "meanX": sx["mean"], "sampleSdX": sx["sample"],
           "populationSdX": sx["population"], "meanY": sy["mean"], "sampleSdY": sy["sample"],
           "populationSdY": sy["population"], "sumX": sx["sum"], "sumX2": sx["sum2"],
           "sumY": sy["sum"], "sumY2": sy["sum2"], "sumXY": sum(x * y for x, y in zip(xs, ys)),
           "a": a, "b": b, "r": r, "r2": r * r}
    if px is not None:
        out["predictedY"] = predict_y(model, a, b, D(px))
    if py is not None:
        out["predictedX"] = predict_x(model, a, b, D(py))
    return model, xtext, ytext, px, py, out


def main():
    for case in sys.argv[1:] or CASES:
        model, xtext, ytext, px, py, out = values(case)
        print(f"{case}: model={model} x={xtext.replace(' ', ',')} y={ytext.replace(' ', ',')}"
              + (f" predictX={px}" if px else "") + (f" predictY={py}" if py else ""))
        for key, value in out.items():
            print(f"  {key}: {value if isinstance(value, int) else format(value, '.20g')}")


if __name__ == "__main__":
    main()
