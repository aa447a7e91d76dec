#pragma once

#include "GrowthModel.h"
#include "framework/QVFunctionController.h"

// The growth screen: the start value, the end value, the years and the
// growth rate, the blank one worked out as the user types. Its fields and
// results are those of its description (GrowthDescription.cpp).
class GrowthController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit GrowthController(QObject* parent = nullptr);

    GrowthModel* growthModel() const { return static_cast<GrowthModel*>(model()); }

protected:
    void connectMvc() override;
};
