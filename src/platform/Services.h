#pragma once

#include <QDateTime>
#include <functional>
#include <memory>

class SettingsStore;
class MailComposer;
class ReviewPrompt;
class UrlOpener;

// The platform services the app uses, each behind its interface. The real
// implementations are made on first use; tests install their own.
class Services {
public:
    using Clock = std::function<QDateTime()>;

    static SettingsStore& settings();
    static MailComposer& mailComposer();
    static ReviewPrompt& reviewPrompt();
    static UrlOpener& urlOpener();
    static QDateTime now();

    static void setSettings(std::shared_ptr<SettingsStore> store);
    static void setMailComposer(std::shared_ptr<MailComposer> composer);
    static void setReviewPrompt(std::shared_ptr<ReviewPrompt> prompt);
    static void setUrlOpener(std::shared_ptr<UrlOpener> opener);
    static void setClock(Clock clock);

    // Drops every installed service, so the next use makes fresh defaults
    // (reading TALLYVANE_HOME again).
    static void reset();
};
