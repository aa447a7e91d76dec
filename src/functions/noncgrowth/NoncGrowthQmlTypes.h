#pragma once

// The QML type of this screen's table, which its controller owns.

#include "GrowthTableController.h"

#include <QtQml/qqml.h>

struct GrowthTableControllerForeign {
    Q_GADGET
    QML_FOREIGN(GrowthTableController)
    QML_NAMED_ELEMENT(GrowthTableController)
    QML_UNCREATABLE("The nonconstant-growth screen owns its rate table.")
};
