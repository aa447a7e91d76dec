#include "StatisticsModel.h"

#include "numerics/CsvWriter.h"
#include "numerics/TextTable.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
// The notes of a prediction nobody asked for: hints, not problems, so the
// report leaves them out.
const QString noXGiven = QStringLiteral("Enter an x to predict y.");
const QString noYGiven = QStringLiteral("Enter a y to predict x.");
constexpr int rowsNamed = 3;      // rows a note names before "and N more"
constexpr int rowsInReport = 100; // rows a report lists
constexpr int curveSamples = 101; // points of the chart's curve
const char* const colorHex = "#C2185B";

// The results of each kind, by property.
const QStringList xResults = {QStringLiteral("meanX"), QStringLiteral("sampleSdX"),
                              QStringLiteral("populationSdX"), QStringLiteral("sumX"),
                              QStringLiteral("sumX2")};
const QStringList yResults = {QStringLiteral("meanY"), QStringLiteral("sampleSdY"),
                              QStringLiteral("populationSdY"), QStringLiteral("sumY"),
                              QStringLiteral("sumY2")};
const QStringList regressionResults = {QStringLiteral("a"),          QStringLiteral("b"),
                                       QStringLiteral("r"),          QStringLiteral("r2"),
                                       QStringLiteral("predictedY"), QStringLiteral("predictedX")};

// What each model cannot take, for the note naming such rows.
QString cannotTake(Regression::Model model)
{
    switch (model) {
    case Regression::Model::Logarithmic:
        return QStringLiteral("x ≤ 0, which the logarithmic model cannot take.");
    case Regression::Model::Exponential:
        return QStringLiteral("y ≤ 0, which the exponential model cannot take.");
    case Regression::Model::Power:
        return QStringLiteral("x ≤ 0 or y ≤ 0, which the power model cannot take.");
    case Regression::Model::Linear:
        break;
    }
    return {};
}

// The model's curve as the report writes it: report files are ASCII.
QString formula(const QString& model)
{
    if (model == QLatin1String("Logarithmic"))
        return QStringLiteral("y = a + b*ln x");
    if (model == QLatin1String("Exponential"))
        return QStringLiteral("y = a*e^(b*x)");
    if (model == QLatin1String("Power"))
        return QStringLiteral("y = a*x^b");
    return QStringLiteral("y = a + b*x");
}

} // namespace

const QStringList& StatisticsModel::models()
{
    static const QStringList words = {QStringLiteral("Linear"), QStringLiteral("Logarithmic"),
                                      QStringLiteral("Exponential"), QStringLiteral("Power")};
    return words;
}

void StatisticsModel::configureNames()
{
    setNames({QStringLiteral("StatisticsReportCreatedNotification"),
              QStringLiteral("StatisticsReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"),
              QStringLiteral("Statistics and Regression"), QStringLiteral("statistics_description"),
              QStringLiteral("statistics"), QStringLiteral("Statistics and Regression")});
}

QString StatisticsModel::rowsText(const QList<int>& numbers)
{
    QStringList named;
    for (int k = 0; k < numbers.size() && k < rowsNamed; ++k)
        named << QString::number(numbers.at(k));
    if (named.isEmpty())
        return {};
    if (named.size() == 1)
        return QStringLiteral("Row ") + named.first();
    const qsizetype more = numbers.size() - named.size();
    if (more > 0)
        return QStringLiteral("Rows %1 and %2 more")
            .arg(named.join(QStringLiteral(", ")))
            .arg(more);
    const QString last = named.takeLast();
    return QStringLiteral("Rows %1 and %2").arg(named.join(QStringLiteral(", ")), last);
}

std::optional<Regression::Model> StatisticsModel::chosenModel() const
{
    switch (models().indexOf(regressionModel)) {
    case 0:
        return Regression::Model::Linear;
    case 1:
        return Regression::Model::Logarithmic;
    case 2:
        return Regression::Model::Exponential;
    case 3:
        return Regression::Model::Power;
    default:
        return std::nullopt;
    }
}

void StatisticsModel::blankAll(const QString& reason)
{
    for (const QStringList* group : {&xResults, &yResults}) {
        for (const QString& key : *group) {
            setProperty(key.toLatin1().constData(), noNumber);
            setNote(key, reason);
        }
    }
    blankPaired(reason);
}

void StatisticsModel::blankPaired(const QString& reason)
{
    sumXY = noNumber;
    setNote(QStringLiteral("sumXY"), reason);
    blankRegression(reason);
}

void StatisticsModel::blankRegression(const QString& reason)
{
    for (const QString& key : regressionResults) {
        setProperty(key.toLatin1().constData(), noNumber);
        setNote(key, reason);
    }
}

void StatisticsModel::calculateResult()
{
    clearNotes();
    n = 0;
    if (!dataProblem.isEmpty()) {
        n = noNumber;
        setNote(QStringLiteral("n"), dataProblem);
        blankAll(dataProblem);
        return;
    }
    std::vector<double> xs;
    std::vector<double> ys;
    QList<int> xWithoutY;
    QList<int> yWithoutX;
    for (const Row& row : rows) {
        if (row.x)
            xs.push_back(*row.x);
        if (row.y)
            ys.push_back(*row.y);
        if (row.x && !row.y)
            xWithoutY << row.row;
        else if (row.y && !row.x)
            yWithoutX << row.row;
    }
    if (xs.empty() && ys.empty()) {
        blankAll(QStringLiteral("Enter x values, and y values for a regression."));
        return;
    }

    const Regression::Summary sx = Regression::summarize(xs);
    n = double(sx.n);
    meanX = sx.mean;
    sampleSdX = sx.sampleSd;
    populationSdX = sx.populationSd;
    sumX = sx.sum;
    sumX2 = sx.sumOfSquares;
    const QString oneValue = QStringLiteral("One value has no sample standard deviation.");
    if (xs.empty()) {
        for (const QString& key : xResults)
            setNote(key, QStringLiteral("Enter x values."));
    } else if (xs.size() == 1) {
        setNote(QStringLiteral("sampleSdX"), oneValue);
    }

    if (ys.empty()) {
        const QString noY = QStringLiteral("Enter y values for a regression.");
        for (const QString& key : yResults) {
            setProperty(key.toLatin1().constData(), noNumber);
            setNote(key, noY);
        }
        blankPaired(noY);
        return;
    }
    const Regression::Summary sy = Regression::summarize(ys);
    meanY = sy.mean;
    sampleSdY = sy.sampleSd;
    populationSdY = sy.populationSd;
    sumY = sy.sum;
    sumY2 = sy.sumOfSquares;
    if (ys.size() == 1)
        setNote(QStringLiteral("sampleSdY"), oneValue);

    // Pairs are needed from here on: a row with half a pair is named, never
    // left out.
    QStringList halves;
    if (!xWithoutY.isEmpty())
        halves << QStringLiteral("%1: x without y.").arg(rowsText(xWithoutY));
    if (!yWithoutX.isEmpty())
        halves << QStringLiteral("%1: y without x.").arg(rowsText(yWithoutX));
    if (!halves.isEmpty()) {
        blankPaired(halves.join(QLatin1Char(' ')) +
                    QStringLiteral(" Enter both, or clear the row."));
        return;
    }
    sumXY = Regression::sumOfProducts(xs, ys);

    const std::optional<Regression::Model> model = chosenModel();
    if (!model) {
        blankRegression(
            QStringLiteral("The model is one of: %1.").arg(models().join(QStringLiteral(", "))));
        return;
    }
    QList<int> refused;
    for (const Row& row : rows) {
        if (!Regression::takesX(*model, *row.x) || !Regression::takesY(*model, *row.y))
            refused << row.row;
    }
    if (!refused.isEmpty()) {
        blankRegression(QStringLiteral("%1: %2").arg(rowsText(refused), cannotTake(*model)));
        return;
    }

    const Regression::Fit fit = Regression::fit(*model, xs, ys);
    switch (fit.problem) {
    case Regression::Line::Problem::TooFewPoints:
        blankRegression(QStringLiteral("A regression needs at least two rows with x and y."));
        return;
    case Regression::Line::Problem::ConstantX:
        blankRegression(QStringLiteral("All x values are equal: no curve can be fitted."));
        return;
    case Regression::Line::Problem::NotFinite:
        blankRegression(tooLarge());
        return;
    case Regression::Line::Problem::None:
        break;
    }
    a = fit.a;
    b = fit.b;
    r = fit.r;
    r2 = r * r;
    if (std::isnan(r)) {
        const QString flat = QStringLiteral("All y values are equal: r is undefined.");
        setNote(QStringLiteral("r"), flat);
        setNote(QStringLiteral("r2"), flat);
    }
    explain("a", {tooLarge()});
    predict();
}

void StatisticsModel::predict()
{
    const std::optional<Regression::Model> model = chosenModel();
    // A prediction left blank is no number, with a hint rather than a
    // complaint: nothing was asked.
    if (!predictXProblem.isEmpty()) {
        predictedY = noNumber;
        setNote(QStringLiteral("predictedY"), predictXProblem);
    } else if (std::isnan(predictX)) {
        predictedY = noNumber;
        setNote(QStringLiteral("predictedY"), noXGiven);
    } else {
        predictedY = Regression::predictY(*model, a, b, predictX);
        if (std::isnan(predictedY))
            setNote(
                QStringLiteral("predictedY"),
                QStringLiteral("The %1 curve has no y for x ≤ 0.").arg(regressionModel.toLower()));
        if (std::isinf(predictedY))
            setNote(QStringLiteral("predictedY"), tooLarge());
    }
    if (!predictYProblem.isEmpty()) {
        predictedX = noNumber;
        setNote(QStringLiteral("predictedX"), predictYProblem);
    } else if (std::isnan(predictY)) {
        predictedX = noNumber;
        setNote(QStringLiteral("predictedX"), noYGiven);
    } else {
        predictedX = Regression::predictX(*model, a, b, predictY);
        if (std::isnan(predictedX))
            setNote(QStringLiteral("predictedX"),
                    b == 0 ? QStringLiteral("The curve is flat (b = 0): no one x gives a y.")
                           : QStringLiteral("The %1 curve has no x for y ≤ 0.")
                                 .arg(regressionModel.toLower()));
        if (std::isinf(predictedX))
            setNote(QStringLiteral("predictedX"), tooLarge());
    }
}

bool StatisticsModel::fitted() const
{
    return std::isfinite(a) && std::isfinite(b);
}

double StatisticsModel::fittedY(double x) const
{
    const std::optional<Regression::Model> model = chosenModel();
    return model && fitted() ? Regression::predictY(*model, a, b, x) : noNumber;
}

QByteArray StatisticsModel::scheduleCsv() const
{
    CsvWriter csv({QStringLiteral("row"), QStringLiteral("x"), QStringLiteral("y"),
                   QStringLiteral("fittedY"), QStringLiteral("residual")},
                  dataProblem.isEmpty() ? rows.size() : 0);
    if (!dataProblem.isEmpty())
        return csv.take();
    for (const Row& row : rows) {
        if (!row.x)
            continue;
        const double fit = row.y ? fittedY(*row.x) : noNumber;
        csv.integer(row.row);
        csv.shortest(*row.x);
        if (row.y)
            csv.shortest(*row.y);
        else
            csv.empty();
        csv.shortest(fit);
        csv.shortest(row.y ? *row.y - fit : noNumber);
        csv.endRow();
    }
    return csv.take();
}

ScatterData StatisticsModel::chartData() const
{
    ScatterData data;
    if (!dataProblem.isEmpty())
        return data;
    for (const Row& row : rows) {
        if (row.x && row.y && std::isfinite(*row.x) && std::isfinite(*row.y))
            data.points.append({*row.x, *row.y});
    }
    if (data.points.isEmpty() || !fitted())
        return data;
    const auto [low, high] =
        std::minmax_element(data.points.begin(), data.points.end(),
                            [](const QPointF& p, const QPointF& q) { return p.x() < q.x(); });
    const double from = low->x();
    const double to = high->x();
    for (int k = 0; k < curveSamples; ++k) {
        const double x = from + (to - from) * k / (curveSamples - 1);
        if (const double y = fittedY(x); std::isfinite(y))
            data.curve.append({x, y});
    }
    return data;
}

void StatisticsModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    const auto line = [&body](const QString& label, double value) {
        body += QStringLiteral("%1: %2\n").arg(label, stringFromDouble(value));
    };
    body += QStringLiteral("Model: %1 (%2)\n").arg(regressionModel, formula(regressionModel));
    line(QStringLiteral("n"), n);
    line(QStringLiteral("Mean of x"), meanX);
    line(QStringLiteral("Sample SD of x"), sampleSdX);
    line(QStringLiteral("Population SD of x"), populationSdX);
    line(QStringLiteral("Mean of y"), meanY);
    line(QStringLiteral("Sample SD of y"), sampleSdY);
    line(QStringLiteral("Population SD of y"), populationSdY);
    line(QStringLiteral("Sum of x"), sumX);
    line(QStringLiteral("Sum of x^2"), sumX2);
    line(QStringLiteral("Sum of y"), sumY);
    line(QStringLiteral("Sum of y^2"), sumY2);
    line(QStringLiteral("Sum of x*y"), sumXY);
    line(QStringLiteral("a"), a);
    line(QStringLiteral("b"), b);
    line(QStringLiteral("r"), r);
    line(QStringLiteral("r^2"), r2);
    if (!std::isnan(predictX) || !predictXProblem.isEmpty())
        line(QStringLiteral("Predicted y at x = %1").arg(stringFromDouble(predictX)), predictedY);
    if (!std::isnan(predictY) || !predictYProblem.isEmpty())
        line(QStringLiteral("Predicted x at y = %1").arg(stringFromDouble(predictY)), predictedX);
    // What the screen says under blank results goes with them, each once.
    QStringList said;
    const QMap<QString, QString> lines = notes();
    for (const QString& key :
         {QStringLiteral("n"), QStringLiteral("meanX"), QStringLiteral("sampleSdX"),
          QStringLiteral("meanY"), QStringLiteral("sampleSdY"), QStringLiteral("sumXY"),
          QStringLiteral("a"), QStringLiteral("r"), QStringLiteral("predictedY"),
          QStringLiteral("predictedX")}) {
        const QString note = lines.value(key);
        if (!note.isEmpty() && !said.contains(note) && note != noXGiven && note != noYGiven)
            said << note;
    }
    // Report files are plain ASCII: the notes' "≤" is written "<=".
    for (const QString& note : said)
        body +=
            QString(note).replace(QStringLiteral("≤"), QStringLiteral("<=")) + QLatin1Char('\n');
    // The data, as far as a report stays readable; the CSV has every row.
    QList<QStringList> table = {{QStringLiteral("Row"), QStringLiteral("x"), QStringLiteral("y")}};
    for (const Row& row : rows) {
        if (table.size() > rowsInReport)
            break;
        table.append({QString::number(row.row),
                      row.x ? stringFromDouble(*row.x) : QStringLiteral("-"),
                      row.y ? stringFromDouble(*row.y) : QStringLiteral("-")});
    }
    if (table.size() > 1 && dataProblem.isEmpty()) {
        body += QLatin1Char('\n') + TextTable::format(table, {true, true, true});
        if (rows.size() > rowsInReport)
            body += QStringLiteral("(%1 more rows)\n").arg(rows.size() - rowsInReport);
    }
    writeReport(userInfo, QStringLiteral("Statistics and Regression"),
                QString::fromLatin1(colorHex), body);
}
