#pragma once

#include "QVFunctionModel.h"
#include "QVFunctionView.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>

class Presenter;

// Base of every calculator screen: the title, the export flow (save the
// report to the list, or e-mail it), the mail with its attachments and the
// calculator/description switch.
//
// After construction call load(): the subclass's connectMvc() makes the
// model and the view, then the base wires itself to them.
class QVFunctionController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVFunctionView* view READ qvFunctionView CONSTANT)
    Q_PROPERTY(QString selectedAction READ selectedAction NOTIFY selectedActionChanged)

public:
    explicit QVFunctionController(QObject* parent = nullptr);
    ~QVFunctionController() override;

    void load();

    QVFunctionModel* model() const { return m_model.get(); }
    QVFunctionView* qvFunctionView() const { return m_view; }
    QString selectedAction() const { return m_selectedAction; }
    void setPresenter(Presenter* presenter) { m_presenter = presenter; }
    Presenter* presenter() const { return m_presenter; }

    Q_INVOKABLE void exportClicked();
    Q_INVOKABLE void segmentChanged(int segment);

    void sendReportRequestedNotification(const QString& title);
    void receiveReportCreatedNotification();
    void showEmail();
    // The mail program is done with the message, whatever became of it.
    void mailComposerFinished();

    Q_INVOKABLE static QString stringFromDouble(double value);

signals:
    void selectedActionChanged();

protected:
    // Creates the model and the view and hands them over with setModel()
    // and setView().
    virtual void connectMvc() = 0;
    void setModel(std::unique_ptr<QVFunctionModel> model);
    void setView(QVFunctionView* view);

private:
    void viewDidLoad();
    void configureNavigationBar();
    void configureObservers();
    void loadDescription();
    void setSelectedAction(const QString& action);
    void showSaveTitleAlert();

    std::unique_ptr<QVFunctionModel> m_model;
    QPointer<QVFunctionView> m_view;
    Presenter* m_presenter = nullptr;
    QString m_selectedAction;
};
