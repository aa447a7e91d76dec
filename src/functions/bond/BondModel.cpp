#include "BondModel.h"

#include <QLoggingCategory>
#include <cmath>

Q_LOGGING_CATEGORY(lcBond, "tallyvane.bond", QtWarningMsg)

void BondModel::configureNames()
{
    setNames({QStringLiteral("BondReportCreatedNotification"),
              QStringLiteral("BondReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Bond Calculator"),
              QStringLiteral("bond_description"), QStringLiteral("bond"), QStringLiteral("Bond")});
}

const QList<std::pair<QString, int>>& BondModel::frequencies()
{
    static const QList<std::pair<QString, int>> all = {{QStringLiteral("Monthly"), 12},
                                                       {QStringLiteral("Quarterly"), 4},
                                                       {QStringLiteral("Semiannually"), 2},
                                                       {QStringLiteral("Annually"), 1}};
    return all;
}

void BondModel::setFreqValue()
{
    if (frequencyValue == 0) {
        // A fresh screen computes its first result annually, whatever the
        // button shows.
        frequencyValue = 1;
    } else {
        bool known = false;
        for (const auto& [word, count] : frequencies()) {
            if (frequency == word) {
                frequencyValue = count;
                known = true;
                break;
            }
        }
        if (!known)
            return;
    }
    qCDebug(lcBond, "%s, %d", qUtf8Printable(frequency), frequencyValue);
}

void BondModel::calculateResult()
{
    setFreqValue();
    const double f = frequencyValue;
    const double n = std::trunc(years * f);
    const double y = yieldToMaturity / 100 / f;
    const double coupon = faceValue * (couponRate / 100) / f;
    const double b = 1 + y;

    const double v = 1 / std::pow(b, n);
    bondValue = coupon * (1 - v) / y + faceValue * v;

    const Sums sums = n > maximumSummedPeriods ? sumInClosedForm(n, coupon, faceValue, y, b)
                                               : sumPeriodByPeriod(n, coupon, faceValue, b);
    qCDebug(lcBond, "Duration Sum: %f, Convexity Sum: %f", sums.duration, sums.convexity);

    maculayDuration = sums.duration / (bondValue * f);
    modifiedDuration = maculayDuration / b;
    convexity = sums.convexity / (bondValue * f * f);

    clearNotes();
    explainEntries({"faceValue", "couponRate", "yieldToMaturity", "years"});
    QString reason;
    if (faceValue == 0)
        reason = QStringLiteral("Enter the face value.");
    else if (y == 0)
        reason = QStringLiteral(
            "A yield of 0 divides by zero in these formulas: enter a yield other than 0.");
    else if (b <= 0)
        reason = QStringLiteral("The yield must be above %1 % (-100 % a coupon period).")
                     .arg(-100 * frequencyValue);
    // The durations are weighted by the bond's value.
    const bool noValue = bondValue == 0;
    explain("bondValue", {reason, tooLarge()});
    for (const char* property : {"maculayDuration", "modifiedDuration"})
        explain(property,
                {reason, noValue ? QStringLiteral("The bond value is 0: no duration.") : QString(),
                 tooLarge()});
    explain("convexity",
            {reason, noValue ? QStringLiteral("The bond value is 0: no convexity.") : QString(),
             tooLarge()});
}

BondModel::Sums BondModel::sumPeriodByPeriod(double n, double coupon, double face, double b)
{
    Sums sums;
    // n ≤ maximumSummedPeriods here, so the loop is bounded.
    for (double t = 1; t <= n; ++t) {
        const double cash = t == n ? coupon + face : coupon;
        const double present = cash / std::pow(b, t);
        const double convexityTerm = (t * t + t) * present / (b * b);
        sums.duration += present * t;
        sums.convexity += convexityTerm;
        qCDebug(lcBond, "%f %f %f", cash, present * t, convexityTerm);
    }
    return sums;
}

// The same sums for very long bonds, with x = 1/b and v = xⁿ:
//   Σ t·xᵗ        = x/g² − v·(x/g² + n·x/g)
//   Σ (t² + t)·xᵗ = 2x/g³ − v·(2x/g³ + 2n·x/g² + n(n + 1)·x/g)
// over t = 1 … n, where g = 1 − x = y/b; the face value adds n·v and
// n(n + 1)·v times the face. When v underflows to 0 the bond is in effect a
// perpetuity and the v terms are dropped (they would give 0·∞ otherwise).
BondModel::Sums BondModel::sumInClosedForm(double n, double coupon, double face, double y, double b)
{
    const double x = 1 / b;
    const double g = y / b;
    const double v = 1 / std::pow(b, n);
    double first = x / (g * g);
    double second = 2 * x / (g * g * g);
    double faceFirst = 0;
    double faceSecond = 0;
    if (v != 0) {
        first -= v * (x / (g * g) + n * x / g);
        second -= v * (2 * x / (g * g * g) + 2 * n * x / (g * g) + n * (n + 1) * x / g);
        faceFirst = face * n * v;
        faceSecond = face * n * (n + 1) * v;
    }
    return {coupon * first + faceFirst, (coupon * second + faceSecond) / (b * b)};
}

void BondModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Face Value: %1\n").arg(stringFromDouble(faceValue));
    body += QStringLiteral("Coupon Rate: %1%\n").arg(stringFromDouble(couponRate));
    body += QStringLiteral("Yield to Maturity: %1%\n").arg(stringFromDouble(yieldToMaturity));
    body += QStringLiteral("Years: %1\n").arg(stringFromDouble(years));
    body += QStringLiteral("Frequency: %1\n\n").arg(frequency);
    body += QStringLiteral("Bond Value: %1\n").arg(stringFromDouble(bondValue));
    body += QStringLiteral("Maculay Duration: %1\n").arg(stringFromDouble(maculayDuration));
    body += QStringLiteral("Modified Duration: %1\n").arg(stringFromDouble(modifiedDuration));
    body += QStringLiteral("Convexity: %1\n").arg(stringFromDouble(convexity));
    writeReport(userInfo, QStringLiteral("Bond"), QStringLiteral("#E8B71A"), body);
}
