#pragma once

// Asks the platform to offer its "rate this app" prompt; the platform
// decides whether anything is shown.
class ReviewPrompt {
public:
    virtual ~ReviewPrompt() = default;
    virtual void requestReview() = 0;
};

// Desktops have no store prompt: requests are only counted.
class CountingReviewPrompt final : public ReviewPrompt {
public:
    void requestReview() override { ++m_requests; }
    int requestCount() const { return m_requests; }

private:
    int m_requests = 0;
};
