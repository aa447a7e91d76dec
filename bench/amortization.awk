# The yardstick of bulk output (scripts/perf): the schedule of a loan of
# 200,000 at 6.5 % a year paid monthly from January 2027, `n` payments
# (default 100,000), written as CSV with the same columns as
# `tallyvane-cli calc amortization ... --csv`: computed in floating point
# and printed with printf, one row a payment, nothing kept.
#
#   mawk -v n=100000 -f bench/amortization.awk > schedule.csv
BEGIN {
  if (n == "") n = 100000
  P = 200000; r = 0.065 / 12
  pmt = P * r / (1 - (1 + r) ^ (-n))
  bal = P
  printf "period,date,payment,interest,principal,balance,extra,event\r\n"
  for (k = 1; k <= n; k++) {
    i = bal * r; p = pmt - i; bal -= p
    y = 2027 + int((k - 1) / 12); m = (k - 1) % 12 + 1
    printf "%d,%04d-%02d-01,%.2f,%.2f,%.2f,%.2f,0.00,\r\n", k, y, m, pmt, i, p, bal
  }
}
