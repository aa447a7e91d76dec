#pragma once

// The C++ types QML uses, registered with the "Tallyvane" module. Screens
// made from QML get the app's presenter.

#include "QmlPresenter.h"
#include "app/about/AboutController.h"
#include "app/about/SupportController.h"
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorHelpModel.h"
#include "calculator/CalculatorHistoryModel.h"
#include "calculator/CalculatorKeypad.h"
#include "charts/MultiLineGraphView.h"
#include "charts/ScatterChart.h"
#include "framework/CalculatorRegistry.h"
#include "framework/FunctionTableModel.h"
#include "framework/QVChartController.h"
#include "framework/QVFunctionController.h"
#include "framework/QVFunctionView.h"
#include "framework/QVNumericTextField.h"
#include "framework/TableController.h"
#include "gui/ColorScheme.h"
#include "numerics/DateText.h"
#include "numerics/NumberFormat.h"
#include "reports/ReportComparisonController.h"
#include "reports/ReportDetailController.h"
#include "reports/ReportTableModel.h"
#include "store/ReportStore.h"

#include <QObject>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QThread>
#include <QTimer>
#include <QtQml/qqml.h>
#include <QtQml/qqmlparserstatus.h>
#include <memory>

// Light or dark, following the desktop; AppTheme picks its colours by it.
struct SystemColorSchemeForeign {
    Q_GADGET
    QML_FOREIGN(SystemColorScheme)
    QML_NAMED_ELEMENT(SystemColorScheme)
    QML_SINGLETON
};

// The saved reports as QML makes them: read once the component is complete,
// or, with `deferred`, after the window's first frame, the check of the
// store (which may find damage and repair it) running on a thread of its
// own meanwhile, so that the window never waits for the database. Reading
// first creates the store, and a save needs the user's input, which cannot
// come before the window is shown. What the check found is told once, in an
// alert, when the list has been read.
class QmlReportTableModel : public ReportTableModel, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(bool deferred MEMBER m_deferred)
    QML_NAMED_ELEMENT(ReportTableModel)

public:
    explicit QmlReportTableModel(QObject* parent = nullptr) : ReportTableModel(Unloaded{}, parent)
    {}
    ~QmlReportTableModel() override
    {
        // The check gives up within seconds; the store outlives no thread.
        if (m_checking)
            m_checking->wait();
    }
    void classBegin() override {}
    void componentComplete() override
    {
        // Declared in a window's file, the window is its context's object.
        const QQmlContext* context = qmlContext(this);
        auto* window = context ? qobject_cast<QQuickWindow*>(context->contextObject()) : nullptr;
        if (!m_deferred || !window) {
            loadReportArray();
            tellNotice();
            return;
        }
        // Queued: the frame may be swapped on the render thread.
        connect(
            window, &QQuickWindow::frameSwapped, this,
            [this] { QTimer::singleShot(0, this, [this] { checkThenLoad(); }); },
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    }

private:
    void checkThenLoad()
    {
        m_checking.reset(QThread::create([] { ReportStore::prepare(); }));
        connect(m_checking.get(), &QThread::finished, this, [this] {
            loadReportArray();
            tellNotice();
        });
        m_checking->start();
    }

    bool m_deferred = false;
    std::unique_ptr<QThread> m_checking;
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

struct CalculatorControllerForeign {
    Q_GADGET
    QML_FOREIGN(CalculatorController)
    QML_NAMED_ELEMENT(CalculatorController)
};

struct ReportDetailControllerForeign {
    Q_GADGET
    QML_FOREIGN(ReportDetailController)
    QML_NAMED_ELEMENT(ReportDetailController)
};

struct ReportComparisonControllerForeign {
    Q_GADGET
    QML_FOREIGN(ReportComparisonController)
    QML_NAMED_ELEMENT(ReportComparisonController)
};

struct QVFunctionControllerForeign {
    Q_GADGET
    QML_FOREIGN(QVFunctionController)
    QML_NAMED_ELEMENT(QVFunctionController)
    QML_UNCREATABLE("Each calculator screen makes its own controller.")
};

struct QVChartControllerForeign {
    Q_GADGET
    QML_FOREIGN(QVChartController)
    QML_NAMED_ELEMENT(QVChartController)
    QML_UNCREATABLE("Each calculator screen makes its own controller.")
};

struct MultiLineGraphViewForeign {
    Q_GADGET
    QML_FOREIGN(MultiLineGraphView)
    QML_NAMED_ELEMENT(MultiLineGraphView)
};

struct ScatterChartForeign {
    Q_GADGET
    QML_FOREIGN(ScatterChart)
    QML_NAMED_ELEMENT(ScatterChart)
};

struct TableControllerForeign {
    Q_GADGET
    QML_FOREIGN(TableController)
    QML_NAMED_ELEMENT(TableController)
    QML_UNCREATABLE("Each table is made by its screen's controller.")
};

struct AboutControllerForeign {
    Q_GADGET
    QML_FOREIGN(AboutController)
    QML_NAMED_ELEMENT(AboutController)
};

struct SupportControllerForeign {
    Q_GADGET
    QML_FOREIGN(SupportController)
    QML_NAMED_ELEMENT(SupportController)
};

struct FunctionTableModelForeign {
    Q_GADGET
    QML_FOREIGN(FunctionTableModel)
    QML_NAMED_ELEMENT(FunctionTableModel)
};

// The calculators of the registry, for the screens: the catalogue's lists,
// the screen of each identifier, and the plain forms laid out from their
// descriptions.
class Calculators : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // The calculators of one catalogue list ("functions", "stock", "loans",
    // "bonds", "business"): name, title, screen identifier, icon and colour each, and
    // whether the list is its own ("home"; false where it is listed too).
    Q_INVOKABLE static QVariantList entries(const QString& list)
    {
        const CatalogueEntry::List wanted = list == u"stock"      ? CatalogueEntry::List::Stock
                                            : list == u"loans"    ? CatalogueEntry::List::Loans
                                            : list == u"bonds"    ? CatalogueEntry::List::Bonds
                                            : list == u"business" ? CatalogueEntry::List::Business
                                                                  : CatalogueEntry::List::Functions;
        QVariantList rows;
        for (const CalculatorDescription* d : CalculatorRegistry::calculators()) {
            if (d->entry.listedIn(wanted))
                rows.append(QVariantMap{{QStringLiteral("name"), d->name},
                                        {QStringLiteral("title"), d->entry.title},
                                        {QStringLiteral("screen"), d->screen},
                                        {QStringLiteral("icon"), d->entry.icon},
                                        {QStringLiteral("color"), d->entry.color},
                                        {QStringLiteral("home"), d->entry.list == wanted}});
        }
        return rows;
    }

    // The screen of an identifier: its own QML file (under the module), or
    // "" for a plain form (DescribedScreen), or "?" for none.
    Q_INVOKABLE static QString viewOf(const QString& screen)
    {
        const CalculatorDescription* d = CalculatorRegistry::findScreen(screen);
        return d ? d->view : QStringLiteral("?");
    }
    Q_INVOKABLE static QString nameOf(const QString& screen)
    {
        const CalculatorDescription* d = CalculatorRegistry::findScreen(screen);
        return d ? d->name : QString();
    }

    // A plain form's rows, in order: {type: "field" | "date" | "choice" |
    // "solve" | "result", outlet, name (a field's key), label,
    // section (a heading above it, or ""), signable, countsAsZero}. A field
    // whose key names a compute button is a solve field (SolveField).
    Q_INVOKABLE static QVariantList form(const QString& name)
    {
        QVariantList rows;
        const CalculatorDescription* d = CalculatorRegistry::find(name);
        if (!d)
            return rows;
        // The form calculators count an unreadable field as 0 (and say
        // so); Tallyvane's own leave the results blank instead.
        const bool countsAsZero = d->entry.countsUnreadableAsZero();
        for (const FieldDescription& field : d->fields) {
            if (field.kind == FieldDescription::Kind::Table)
                continue;
            const QString type =
                field.kind == FieldDescription::Kind::Choice ? QStringLiteral("choice")
                : field.kind == FieldDescription::Kind::Date ? QStringLiteral("date")
                : d->solveButtons.contains(field.key)        ? QStringLiteral("solve")
                                                             : QStringLiteral("field");
            rows.append(
                QVariantMap{{QStringLiteral("type"), type},
                            {QStringLiteral("outlet"), field.outlet},
                            {QStringLiteral("name"), field.key},
                            {QStringLiteral("label"), field.label},
                            {QStringLiteral("section"), field.section},
                            {QStringLiteral("signable"), field.signable()},
                            {QStringLiteral("placeholder"),
                             field.placeholder.isEmpty() ? QStringLiteral("0") : field.placeholder},
                            {QStringLiteral("countsAsZero"), countsAsZero}});
        }
        for (const ResultDescription& result : d->results)
            rows.append(QVariantMap{{QStringLiteral("type"), QStringLiteral("result")},
                                    {QStringLiteral("outlet"), result.outlet},
                                    {QStringLiteral("label"), result.label},
                                    {QStringLiteral("section"), result.section},
                                    {QStringLiteral("signable"), false},
                                    {QStringLiteral("countsAsZero"), countsAsZero}});
        return rows;
    }

    // The calculator's worked example as steps for a screen: {type:
    // "field" (outlet, value) | "choice" (outlet, value: the word) |
    // "table" (name, values) | "solve" (name)}, in the example's order.
    Q_INVOKABLE static QVariantList example(const QString& name)
    {
        QVariantList steps;
        const CalculatorDescription* d = CalculatorRegistry::find(name);
        for (const ExampleStep& step : d ? d->exampleSteps() : QList<ExampleStep>()) {
            switch (step.kind) {
            case ExampleStep::Kind::Solve:
                steps.append(QVariantMap{{QStringLiteral("type"), QStringLiteral("solve")},
                                         {QStringLiteral("name"), step.value}});
                break;
            case ExampleStep::Kind::Table:
                steps.append(QVariantMap{{QStringLiteral("type"), QStringLiteral("table")},
                                         {QStringLiteral("name"), step.field->key},
                                         {QStringLiteral("values"), step.value.split(u',')}});
                break;
            case ExampleStep::Kind::Field:
            case ExampleStep::Kind::Choice:
                steps.append(
                    QVariantMap{{QStringLiteral("type"), step.kind == ExampleStep::Kind::Choice
                                                             ? QStringLiteral("choice")
                                                             : QStringLiteral("field")},
                                {QStringLiteral("outlet"), step.field->outlet},
                                {QStringLiteral("value"), step.value}});
                break;
            case ExampleStep::Kind::Unknown:
                break; // the vector tests refuse an example with one
            }
        }
        return steps;
    }

    // A new controller of the calculator `name`, owned by the screen that
    // asks (QML's garbage collection), with the app's presenter.
    Q_INVOKABLE static QVFunctionController* create(const QString& name)
    {
        const CalculatorDescription* d = CalculatorRegistry::find(name);
        if (!d)
            return nullptr;
        QVFunctionController* controller = d->create().release();
        QQmlEngine::setObjectOwnership(controller, QQmlEngine::JavaScriptOwnership);
        return controller;
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
    // Why a typed text is no number or no date, in one plain line ("Not a
    // number", "Ambiguous: write 1234 or 1,234", "Not a date: use
    // YYYY-MM-DD"); empty when it can be read or is empty.
    Q_INVOKABLE static QString numberProblem(const QString& text)
    {
        return NumberFormat::problemWith(text);
    }
    Q_INVOKABLE static QString dateProblem(const QString& text)
    {
        return DateText::problemWith(text);
    }
    // Where a calendar opens for a date field: {year, month (1 to 12), day}
    // of the date the text names, or of today when it names none.
    Q_INVOKABLE static QVariantMap calendarDate(const QString& text)
    {
        const QDate date = DateText::readIsoDate(text).value_or(QDate::currentDate());
        return {{QStringLiteral("year"), date.year()},
                {QStringLiteral("month"), date.month()},
                {QStringLiteral("day"), date.day()}};
    }
    // A day `days` after (before, when negative) the given one, as
    // calendarDate gives it; the same day when the result has no date.
    Q_INVOKABLE static QVariantMap calendarDay(int year, int month, int day, int days)
    {
        const QDate date = QDate(year, month, day).addDays(days);
        return calendarDate(date.isValid() ? date.toString(Qt::ISODate) : QString());
    }
    // The same day `months` months on (back, when negative), or the last
    // day of that month when it is shorter.
    Q_INVOKABLE static QVariantMap calendarMonth(int year, int month, int day, int months)
    {
        const QDate date = QDate(year, month, day).addMonths(months);
        return calendarDate(date.isValid() ? date.toString(Qt::ISODate) : QString());
    }
    // The text a date field takes for a picked day: YYYY-MM-DD.
    Q_INVOKABLE static QString isoDate(int year, int month, int day)
    {
        return QDate(year, month, day).toString(Qt::ISODate);
    }
    // The line a marked field shows: its problem and, in the calculators
    // that count such a text as 0, that they do ("Not a number: counts as
    // 0"). Tallyvane's own calculators leave their results blank instead and
    // show the problem alone.
    Q_INVOKABLE static QString markLine(const QString& problem, bool countsAsZero)
    {
        if (problem.isEmpty() || !countsAsZero)
            return problem;
        if (problem == NumberFormat::problemWith(QStringLiteral("x")))
            return problem + QStringLiteral(": counts as 0");
        return problem + QStringLiteral(" (counts as 0)");
    }
};
