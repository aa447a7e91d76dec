#pragma once

// The C++ types QML uses, registered with the "Tallyvane" module. Screens
// made from QML get the app's presenter.

#include "QmlPresenter.h"
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorHelpModel.h"
#include "calculator/CalculatorHistoryModel.h"
#include "calculator/CalculatorKeypad.h"
#include "framework/NumberFormat.h"
#include "framework/QVFunctionView.h"
#include "framework/QVNumericTextField.h"
#include "reports/ReportDetailController.h"
#include "reports/ReportTableModel.h"

#include <QObject>
#include <QtQml/qqml.h>

struct ReportTableModelForeign {
    Q_GADGET
    QML_FOREIGN(ReportTableModel)
    QML_NAMED_ELEMENT(ReportTableModel)
};

struct QVFunctionViewForeign {
    Q_GADGET
    QML_FOREIGN(QVFunctionView)
    QML_NAMED_ELEMENT(QVFunctionView)
    QML_UNCREATABLE("Views are made by their controllers.")
};

struct QVNumericTextFieldForeign {
    Q_GADGET
    QML_FOREIGN(QVNumericTextField)
    QML_NAMED_ELEMENT(QVNumericTextField)
};

struct CalculatorKeypadForeign {
    Q_GADGET
    QML_FOREIGN(CalculatorKeypad)
    QML_NAMED_ELEMENT(CalculatorKeypad)
};

struct CalculatorHistoryModelForeign {
    Q_GADGET
    QML_FOREIGN(CalculatorHistoryModel)
    QML_NAMED_ELEMENT(CalculatorHistoryModel)
};

struct CalculatorHelpModelForeign {
    Q_GADGET
    QML_FOREIGN(CalculatorHelpModel)
    QML_NAMED_ELEMENT(CalculatorHelpModel)
};

class QmlCalculatorController : public CalculatorController {
    Q_OBJECT
    QML_NAMED_ELEMENT(CalculatorController)

public:
    explicit QmlCalculatorController(QObject* parent = nullptr) : CalculatorController(parent)
    {
        setPresenter(QmlPresenter::instance());
    }
};

class QmlReportDetailController : public ReportDetailController {
    Q_OBJECT
    QML_NAMED_ELEMENT(ReportDetailController)

public:
    explicit QmlReportDetailController(QObject* parent = nullptr) : ReportDetailController(parent)
    {
        setPresenter(QmlPresenter::instance());
    }
};

// Formatting helpers for QML.
class Formats : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;
    Q_INVOKABLE static QString stringFromDouble(double value)
    {
        return NumberFormat::stringFromDouble(value);
    }
    Q_INVOKABLE static QString displayString(double value)
    {
        return NumberFormat::displayString(value);
    }
    Q_INVOKABLE static QString changedSign(const QString& text)
    {
        return QVNumericTextField::changedSign(text);
    }
};
