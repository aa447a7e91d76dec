#pragma once

#include "MarginModel.h"
#include "framework/QVFunctionController.h"

// The margin screen: cost, price, margin and markup, the two left blank
// worked out from the two given as the user types. Its fields and results
// are those of its description (MarginDescription.cpp).
class MarginController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit MarginController(QObject* parent = nullptr);

    MarginModel* marginModel() const { return static_cast<MarginModel*>(model()); }

protected:
    void connectMvc() override;
};
