#pragma once

#include "RateConversionModel.h"
#include "RateConversionView.h"
#include "framework/QVFunctionController.h"

// The rate-conversion screen: the nominal rate, the effective rate and the
// compoundings a year, with a solve button for each rate; the continuous
// rate follows every solve.
class RateConversionController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit RateConversionController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    QStringList solveButtons() const override;
    void solve(const QString& name) override;

    RateConversionModel* rateConversionModel() const
    {
        return static_cast<RateConversionModel*>(model());
    }

protected:
    void connectMvc() override;
};
