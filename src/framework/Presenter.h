#pragma once

#include <QList>
#include <QString>
#include <functional>

// One button of an action sheet or alert.
struct AlertAction {
    QString title;
    bool cancel = false; // drawn and placed as the cancelling choice
    // The alert's default: drawn as such and pressed by Return. Without one
    // the first action that is no cancel is the default (the only action
    // when it is all there is). An alert that offers a further step beside
    // its "OK" ("Open Folder", "Copy") makes "OK" the default, so Return
    // only closes it.
    bool preferred = false;
    // On a sheet: how it is spelled (the title where empty; the answer is
    // always the title), and whether it is what the button shows now.
    QString label = {};
    bool current = false;
};

// An action sheet or an alert, as the logic asks for it. The UI layer
// decides how it looks; tests answer it directly.
struct AlertRequest {
    enum class Kind { ActionSheet, Alert };
    Kind kind = Kind::Alert;
    QString title;
    QString message;
    QList<AlertAction> actions;
    bool hasTextField = false;
    bool numericTextField = false; // the field takes digits only
    QString anchor;                // the control a popover points at, if any
};

// Shows what needs the user and reports the choice back: the title of the
// chosen action and, for alerts with a text field, the text typed.
class Presenter {
public:
    using Answer = std::function<void(const QString& action, const QString& text)>;
    virtual ~Presenter() = default;
    virtual void present(const AlertRequest& request, Answer answer) = 0;

    // The presenter screens use when none was given to them: the app's UI
    // installs itself here. Null until then.
    static Presenter* defaultPresenter();
    static void setDefaultPresenter(Presenter* presenter);
};
