#pragma once

#include "BondModel.h"
#include "framework/QVFunctionController.h"

// The bond screen: four fields and the frequency button; the price,
// durations and convexity are recomputed on every edit and every frequency
// choice. Its fields and results are those of its description
// (BondDescription.cpp); every computation takes the frequency word its
// button shows.
class BondController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit BondController(QObject* parent = nullptr);

    Q_INVOKABLE void frequencyClicked();

    BondModel* bondModel() const { return static_cast<BondModel*>(model()); }

protected:
    void connectMvc() override;
};
