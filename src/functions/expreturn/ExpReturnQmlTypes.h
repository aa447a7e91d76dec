#pragma once

// The QML type of this screen's table, which its controller owns.

#include "ExpReturnTableController.h"

#include <QtQml/qqml.h>

struct ExpReturnTableControllerForeign {
    Q_GADGET
    QML_FOREIGN(ExpReturnTableController)
    QML_NAMED_ELEMENT(ExpReturnTableController)
    QML_UNCREATABLE("The expected-return screen owns its state table.")
};
