#include "Services.h"

#include "MailComposer.h"
#include "ReviewPrompt.h"
#include "SettingsStore.h"
#include "UrlOpener.h"

namespace {

struct Registry {
    std::shared_ptr<SettingsStore> settings;
    std::shared_ptr<MailComposer> mail;
    std::shared_ptr<ReviewPrompt> review;
    std::shared_ptr<UrlOpener> opener;
    Services::Clock clock;
};

Registry& registry()
{
    static Registry r;
    return r;
}

} // namespace

SettingsStore& Services::settings()
{
    auto& r = registry();
    if (!r.settings)
        r.settings = std::make_shared<QSettingsStore>();
    return *r.settings;
}

MailComposer& Services::mailComposer()
{
    auto& r = registry();
    // It opens its drafts with whatever opener is installed at the time.
    if (!r.mail)
        r.mail = std::make_shared<EmlMailComposer>();
    return *r.mail;
}

ReviewPrompt& Services::reviewPrompt()
{
    auto& r = registry();
    if (!r.review)
        r.review = std::make_shared<CountingReviewPrompt>();
    return *r.review;
}

UrlOpener& Services::urlOpener()
{
    auto& r = registry();
    if (!r.opener)
        r.opener = std::make_shared<NoDesktopUrlOpener>();
    return *r.opener;
}

QDateTime Services::now()
{
    const auto& clock = registry().clock;
    return clock ? clock() : QDateTime::currentDateTime();
}

void Services::setSettings(std::shared_ptr<SettingsStore> store)
{
    registry().settings = std::move(store);
}

void Services::setMailComposer(std::shared_ptr<MailComposer> composer)
{
    registry().mail = std::move(composer);
}

void Services::setReviewPrompt(std::shared_ptr<ReviewPrompt> prompt)
{
    registry().review = std::move(prompt);
}

void Services::setUrlOpener(std::shared_ptr<UrlOpener> opener)
{
    registry().opener = std::move(opener);
}

void Services::setClock(Clock clock)
{
    registry().clock = std::move(clock);
}

void Services::reset()
{
    // The mail composer refers to the opener, so it goes first.
    auto& r = registry();
    r.mail.reset();
    r.review.reset();
    r.opener.reset();
    r.settings.reset();
    r.clock = nullptr;
}
