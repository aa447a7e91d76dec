#pragma once

#include "charts/ScatterChartSource.h"
#include "framework/QVFunctionModel.h"
#include "numerics/Regression.h"

#include <QList>
#include <QStringList>
#include <optional>

// Statistics of a column of x values and, with y values beside them, a
// least-squares curve through the pairs (numerics/Regression): one of
// "Linear" (y = a + b·x), "Logarithmic" (y = a + b·ln x), "Exponential"
// (y = a·e^(b·x)) and "Power" (y = a·x^b), each fitted as a straight line
// through the transformed values, with its a, b, r (the correlation of the
// transformed values) and r²; y predicted from an x and x from a y.
//
// Nothing is left out in silence. A row with a cell that cannot be read
// blanks every result (`dataProblem`, set by the screen, names it); a row
// with x but no y (or y but no x) while other rows have both blanks what
// needs pairs, naming the row; rows a model cannot take (x ≤ 0 under ln,
// y ≤ 0 under ln) blank the regression, named as well. The one-variable
// statistics still show in the last two cases. Each result that is no
// number says why in its note.
class StatisticsModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(QString model MEMBER regressionModel)
    Q_PROPERTY(double n MEMBER n)
    Q_PROPERTY(double meanX MEMBER meanX)
    Q_PROPERTY(double meanY MEMBER meanY)
    Q_PROPERTY(double sampleSdX MEMBER sampleSdX)
    Q_PROPERTY(double populationSdX MEMBER populationSdX)
    Q_PROPERTY(double sampleSdY MEMBER sampleSdY)
    Q_PROPERTY(double populationSdY MEMBER populationSdY)
    Q_PROPERTY(double sumX MEMBER sumX)
    Q_PROPERTY(double sumX2 MEMBER sumX2)
    Q_PROPERTY(double sumY MEMBER sumY)
    Q_PROPERTY(double sumY2 MEMBER sumY2)
    Q_PROPERTY(double sumXY MEMBER sumXY)
    Q_PROPERTY(double a MEMBER a)
    Q_PROPERTY(double b MEMBER b)
    Q_PROPERTY(double r MEMBER r)
    Q_PROPERTY(double r2 MEMBER r2)
    Q_PROPERTY(double predictedY MEMBER predictedY)
    Q_PROPERTY(double predictedX MEMBER predictedX)

public:
    using QVFunctionModel::QVFunctionModel;

    static constexpr int maximumRows = 10000;
    // The models, in the order the screen offers them.
    static const QStringList& models();

    // One filled row of the table: its number on the screen (from 1) and
    // the values it holds.
    struct Row {
        int row = 0;
        std::optional<double> x;
        std::optional<double> y;
    };
    QList<Row> rows;
    // Why some cells cannot be read, naming the row; empty when they can.
    QString dataProblem;

    QString regressionModel = QStringLiteral("Linear"); // one of models()
    // The x to predict y from and the y to predict x from; NaN when none
    // is given (the prediction is then blank, with a hint), and why one
    // cannot be read. Inputs the screen reads itself, so no properties: an
    // empty field is no value, which a property would note as a problem.
    double predictX = 0;
    double predictY = 0;
    QString predictXProblem;
    QString predictYProblem;

    double n = 0;
    double meanX = 0;
    double meanY = 0;
    double sampleSdX = 0;
    double populationSdX = 0;
    double sampleSdY = 0;
    double populationSdY = 0;
    double sumX = 0;
    double sumX2 = 0;
    double sumY = 0;
    double sumY2 = 0;
    double sumXY = 0;
    double a = 0;
    double b = 0;
    double r = 0;
    double r2 = 0;
    double predictedY = 0;
    double predictedX = 0;

    void calculateResult() override;
    // Whether the curve was fitted (a and b are numbers).
    bool fitted() const;
    // y on the fitted curve at `x`; NaN where there is none.
    double fittedY(double x) const;
    // One line a row used: "row,x,y,fittedY,residual" (fitted y and
    // residual NaN without a curve; y empty without y values).
    QByteArray scheduleCsv() const;
    // The pairs and the curve, sampled at 101 x over the pairs' range; no
    // points without y values.
    ScatterData chartData() const;
    void createReport(const QVariantMap& userInfo) override;

    // "Row 3", "Rows 3 and 7", "Rows 3, 7 and 9", "Rows 3, 7, 9 and 4
    // more": the first few rows of `numbers` and how many more.
    static QString rowsText(const QList<int>& numbers);

protected:
    void configureNames() override;

private:
    std::optional<Regression::Model> chosenModel() const;
    // Every result NaN, with `reason` as the note of each.
    void blankAll(const QString& reason);
    void blankPaired(const QString& reason);
    void blankRegression(const QString& reason);
    void predict();
};
