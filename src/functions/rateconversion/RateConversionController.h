#pragma once

#include "RateConversionModel.h"
#include "framework/QVFunctionController.h"

// The rate-conversion screen: the nominal rate, the effective rate and the
// compoundings a year, with a solve button for each rate; the continuous
// rate follows every solve. Its fields, solve buttons and result are those
// of its description (RateConversionDescription.cpp).
class RateConversionController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit RateConversionController(QObject* parent = nullptr);

    RateConversionModel* rateConversionModel() const
    {
        return static_cast<RateConversionModel*>(model());
    }

protected:
    void solveFor(const QString& name) override;
    void connectMvc() override;
};
