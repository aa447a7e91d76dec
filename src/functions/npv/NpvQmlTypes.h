#pragma once

// The QML type of this screen's table, which its controller owns.

#include "NpvTableController.h"

#include <QtQml/qqml.h>

struct NpvTableControllerForeign {
    Q_GADGET
    QML_FOREIGN(NpvTableController)
    QML_NAMED_ELEMENT(NpvTableController)
    QML_UNCREATABLE("The NPV screen owns its cash-flow table.")
};
