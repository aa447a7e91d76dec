#include "DatedBondModel.h"

#include <cmath>
#include <limits>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// The results that need the price and the yield.
const char* const pricedResults[] = {"accruedInterest",  "dirtyPrice", "macaulayDuration",
                                     "modifiedDuration", "convexity",  "yieldToCall"};
// The results that say where the settlement falls among the coupons.
const char* const periodResults[] = {"previousCouponDate", "nextCouponDate", "daysFromPrevious",
                                     "daysInPeriod",       "daysToNext",     "couponsRemaining"};

} // namespace

void DatedBondModel::configureNames()
{
    setNames({QStringLiteral("DatedBondReportCreatedNotification"),
              QStringLiteral("DatedBondReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Dated Bond"),
              QStringLiteral("datedbond_description"), QStringLiteral("dated-bond"),
              QStringLiteral("Dated Bond")});
}

const QList<std::pair<QString, int>>& DatedBondModel::frequencies()
{
    static const QList<std::pair<QString, int>> list{
        {QStringLiteral("Annually"), 1},
        {QStringLiteral("Semiannually"), 2},
        {QStringLiteral("Quarterly"), 4},
    };
    return list;
}

BondMath::Bond DatedBondModel::bond() const
{
    BondMath::Bond b;
    b.settlement = settlement;
    b.maturity = maturity;
    b.rate = couponRate / 100;
    b.redemption = redemption;
    b.frequency = 0;
    for (const auto& [word, count] : frequencies()) {
        if (word == frequency)
            b.frequency = count;
    }
    b.basis = DayCount::basisOf(basis).value_or(DayCount::Basis::Us30360);
    return b;
}

QString DatedBondModel::bondProblem() const
{
    if (!inputProblem.isEmpty())
        return inputProblem;
    if (!DayCount::basisOf(basis))
        return QStringLiteral("Choose a day count basis.");
    if (const QString problem = BondMath::problemWith(bond()); !problem.isEmpty())
        return problem;
    if (!std::isfinite(couponRate) || !std::isfinite(redemption))
        return QStringLiteral("Too large a number to compute with.");
    if (couponRate < 0)
        return QStringLiteral("The coupon rate cannot be negative.");
    if (!(redemption > 0))
        return QStringLiteral("The redemption must be above 0.");
    return {};
}

QString DatedBondModel::givenValueProblem(const char* given) const
{
    if (!givenProblem.isEmpty())
        return givenProblem;
    const bool fromYield = qstrcmp(given, "yield") == 0;
    const double value = fromYield ? yield : price;
    if (!std::isfinite(value))
        return QStringLiteral("Too large a number to compute with.");
    if (fromYield && !(yield / 100 / bond().frequency > -1))
        return QStringLiteral("The yield must be above -100% a coupon period.");
    if (!fromYield && !(price > 0))
        return QStringLiteral("The price must be above 0.");
    return {};
}

double DatedBondModel::calculatePrice()
{
    clearNotes();
    explainEntries({"couponRate", "redemption", "yield", "callPrice"});
    QString reason = bondProblem();
    calculatePeriod(reason);
    if (reason.isEmpty())
        reason = givenValueProblem("yield");
    price = reason.isEmpty() ? BondMath::price(bond(), yield / 100) : noNumber;
    calculateRest("price", reason);
    return price;
}

double DatedBondModel::calculateYield()
{
    clearNotes();
    explainEntries({"couponRate", "redemption", "price", "callPrice"});
    QString reason = bondProblem();
    calculatePeriod(reason);
    if (reason.isEmpty())
        reason = givenValueProblem("price");
    yield = reason.isEmpty() ? BondMath::yield(bond(), price) * 100 : noNumber;
    if (reason.isEmpty() && std::isnan(yield))
        reason = QStringLiteral("No yield gives this price.");
    calculateRest("yield", reason);
    return yield;
}

void DatedBondModel::calculatePeriod(const QString& reason)
{
    period = reason.isEmpty() ? BondMath::period(bond()) : BondMath::Period();
    const bool known = period.remaining > 0;
    daysFromPrevious = known ? period.daysFromPrevious : noNumber;
    daysInPeriod = known ? period.daysInPeriod : noNumber;
    daysToNext = known ? period.daysToNext : noNumber;
    couponsRemaining = known ? period.remaining : noNumber;
    for (const char* key : periodResults)
        setNote(QString::fromLatin1(key), known ? QString() : reason);
}

void DatedBondModel::calculateRest(const char* solved, const QString& reason)
{
    if (!reason.isEmpty()) {
        setNote(QString::fromLatin1(solved), reason);
        accruedInterest = dirtyPrice = macaulayDuration = modifiedDuration = convexity =
            yieldToCall = noNumber;
        (qstrcmp(solved, "price") == 0 ? price : yield) = noNumber;
        for (const char* key : pricedResults)
            setNote(QString::fromLatin1(key), reason);
        return;
    }
    const BondMath::Bond b = bond();
    const double y = yield / 100;
    accruedInterest = BondMath::accruedInterest(b);
    dirtyPrice = price + accruedInterest;
    macaulayDuration = BondMath::macaulayDuration(b, y);
    modifiedDuration = BondMath::modifiedDuration(b, y);
    convexity = BondMath::convexity(b, y);
    explain(solved, {tooLarge()});
    for (const char* key : pricedResults)
        explain(key, {tooLarge()});
    calculateYieldToCall();
}

void DatedBondModel::calculateYieldToCall()
{
    yieldToCall = noNumber;
    QString reason = callProblem;
    if (reason.isEmpty() && !callDate.isValid())
        reason = QStringLiteral("Enter a call date and a call price for the yield to call.");
    else if (reason.isEmpty() && callDate <= settlement)
        reason = QStringLiteral("The call date must come after settlement.");
    else if (reason.isEmpty() && callDate > maturity)
        reason = QStringLiteral("The call date must come before maturity.");
    else if (reason.isEmpty() && !(callPrice > 0 && std::isfinite(callPrice)))
        reason = QStringLiteral("Enter a call price above 0.");
    if (reason.isEmpty()) {
        // The same bond, redeemed at the call price on the call date.
        BondMath::Bond called = bond();
        called.maturity = callDate;
        called.redemption = callPrice;
        yieldToCall = BondMath::yield(called, price) * 100;
        if (std::isnan(yieldToCall))
            reason = QStringLiteral("No yield to call gives this price.");
    }
    setNote(QStringLiteral("yieldToCall"), reason);
}

void DatedBondModel::createReport(const QVariantMap& userInfo)
{
    const auto orDash = [](const QString& text) {
        return text.isEmpty() ? QStringLiteral("-") : text;
    };
    QString body;
    body += QStringLiteral("Settlement Date: %1\n").arg(orDash(settlementText()));
    body += QStringLiteral("Maturity Date: %1\n").arg(orDash(maturityText()));
    body += QStringLiteral("Coupon Rate: %1%\n").arg(stringFromDouble(couponRate));
    body += QStringLiteral("Redemption: %1\n").arg(stringFromDouble(redemption));
    body += QStringLiteral("Frequency: %1\n").arg(frequency);
    body += QStringLiteral("Basis: %1\n").arg(basis);
    body += QStringLiteral("Yield: %1%\n").arg(stringFromDouble(yield));
    body += QStringLiteral("Clean Price: %1\n").arg(stringFromDouble(price));
    body += QStringLiteral("Accrued Interest: %1\n").arg(stringFromDouble(accruedInterest));
    body += QStringLiteral("Dirty Price: %1\n").arg(stringFromDouble(dirtyPrice));
    body += QStringLiteral("Macaulay Duration: %1\n").arg(stringFromDouble(macaulayDuration));
    body += QStringLiteral("Modified Duration: %1\n").arg(stringFromDouble(modifiedDuration));
    body += QStringLiteral("Convexity: %1\n").arg(stringFromDouble(convexity));
    if (callDate.isValid()) {
        body += QStringLiteral("Call Date: %1\n").arg(callDateText());
        body += QStringLiteral("Call Price: %1\n").arg(stringFromDouble(callPrice));
        body += QStringLiteral("Yield to Call: %1%\n").arg(stringFromDouble(yieldToCall));
    }
    body += QStringLiteral("Previous Coupon Date: %1\n").arg(orDash(previousCouponDate()));
    body += QStringLiteral("Next Coupon Date: %1\n").arg(orDash(nextCouponDate()));
    body +=
        QStringLiteral("Days from Previous Coupon: %1\n").arg(stringFromDouble(daysFromPrevious));
    body += QStringLiteral("Days in Coupon Period: %1\n").arg(stringFromDouble(daysInPeriod));
    body += QStringLiteral("Days to Next Coupon: %1\n").arg(stringFromDouble(daysToNext));
    body += QStringLiteral("Coupons Remaining: %1\n").arg(stringFromDouble(couponsRemaining));
    // What the screen says under blank results goes with them, once each.
    QStringList lines;
    for (const char* key : {"price", "yield"})
        lines << note(QString::fromLatin1(key));
    for (const char* key : pricedResults)
        lines << note(QString::fromLatin1(key));
    lines.removeAll(QString());
    lines.removeAll(QStringLiteral("Enter a call date and a call price for the yield to call."));
    lines.removeDuplicates();
    for (const QString& line : lines)
        body += line + QLatin1Char('\n');
    writeReport(userInfo, QStringLiteral("Dated Bond"), QStringLiteral("#2E86AB"), body);
}
