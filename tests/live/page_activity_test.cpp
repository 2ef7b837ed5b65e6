#include "page_activity.h"

#include <gtest/gtest.h>

namespace QuillLive {
namespace {

using namespace std::chrono_literals;

// A page whose main frame is "main" in session "page". Time goes on by hand.
class Page : public testing::Test {
public:
    Page() { activity_.Begin("main"); }

    void Event(const char* method, Json parameters, const char* session = "page") {
        activity_.Handle({method, session, std::move(parameters)}, now_);
    }
    void Starts(const char* frame, const char* session = "page") {
        Event("Page.frameStartedLoading", {{"frameId", frame}}, session);
    }
    void Stops(const char* frame, const char* session = "page") {
        Event("Page.frameStoppedLoading", {{"frameId", frame}}, session);
    }
    void Detaches(const char* frame, const char* reason) {
        Event("Page.frameDetached", {{"frameId", frame}, {"reason", reason}});
    }
    void Shows(const char* loader) {
        Event("Page.frameNavigated", {{"frame", {{"id", "main"}, {"loaderId", loader}}}});
    }
    void Loaded(const char* frame, const char* loader) {
        Event("Page.lifecycleEvent", {{"frameId", frame}, {"loaderId", loader}, {"name", "load"}});
    }
    void Requests(const char* request, const char* type = "Fetch", const char* session = "page") {
        Event("Network.requestWillBeSent", {{"requestId", request}, {"type", type}}, session);
    }
    void Load() {
        Starts("main");
        Shows("first");
        Loaded("main", "first");
        Stops("main");
    }
    // Whether it has come to rest when nothing more happens for a second, but not at once.
    bool ComesToRest() {
        EXPECT_FALSE(activity_.AtRest(now_));
        now_ += 1s;
        return activity_.AtRest(now_);
    }

    PageActivity activity_;
    Clock::time_point now_ = Clock::time_point(1h);
};

TEST_F(Page, RestsWhenItsDocumentIsLoaded) {
    EXPECT_FALSE(ComesToRest());
    Starts("main");
    Shows("first");
    EXPECT_FALSE(ComesToRest());
    Loaded("main", "first");
    EXPECT_FALSE(ComesToRest());
    Stops("main");
    EXPECT_TRUE(ComesToRest());
}

TEST_F(Page, AnotherDocumentStartsAnew) {
    Load();
    EXPECT_TRUE(ComesToRest());
    Shows("second");
    Loaded("main", "first");  // late
    Loaded("frame", "second");
    EXPECT_FALSE(ComesToRest());
    Starts("main");
    Loaded("main", "second");
    Stops("main");
    EXPECT_TRUE(ComesToRest());
}

TEST_F(Page, RequestsAreWaitedForAndTheRestAfterThem) {
    Load();
    Requests("1");
    Requests("2");
    EXPECT_FALSE(ComesToRest());
    Event("Network.loadingFinished", {{"requestId", "1"}});
    EXPECT_FALSE(ComesToRest());
    Event("Network.loadingFailed", {{"requestId", "2"}});
    EXPECT_TRUE(ComesToRest());
}

TEST_F(Page, RequestsThatBringNoTextDoNotCount) {
    Load();
    for (const char* const type : {"EventSource", "Media", "Ping", "Document"}) Requests(type, type);
    EXPECT_TRUE(ComesToRest());
}

TEST_F(Page, FramesAreWaitedFor) {
    struct Case {
        const char* name;
        void (*end)(Page&);
        bool rests;
    };
    const Case cases[] = {
        {"loaded", [](Page& page) { page.Stops("frame"); }, true},
        {"removed", [](Page& page) { page.Detaches("frame", "remove"); }, true},
        {"moved to a session of its own", [](Page& page) { page.Detaches("frame", "swap"); }, false},
        {"loaded there", [](Page& page) { page.Stops("frame", "elsewhere"); }, true},
        {"gone with its session",
         [](Page& page) {
             page.Starts("frame", "elsewhere");
             page.Requests("1", "Fetch", "elsewhere");
             page.activity_.SessionEnded("elsewhere", page.now_);
         },
         true},
        {"back before its session has gone",
         [](Page& page) { page.activity_.SessionEnded("elsewhere", page.now_); }, false},
    };
    Load();
    for (const Case& c : cases) {
        Starts("frame");
        EXPECT_FALSE(ComesToRest()) << c.name;
        c.end(*this);
        EXPECT_EQ(ComesToRest(), c.rests) << c.name;
    }
}

TEST_F(Page, EventsWithoutTheirMembersAreHarmless) {
    Load();
    for (const char* const method : {"Page.frameNavigated", "Page.frameDetached", "Page.lifecycleEvent",
                                     "Network.loadingFinished", "Page.frameStoppedLoading"}) {
        for (const Json& parameters :
             {Json(), Json("text"), Json::array(), Json{{"frame", 1}, {"frameId", 2}}}) {
            Event(method, parameters);
        }
    }
    now_ += 1s;
    EXPECT_TRUE(activity_.AtRest(now_));
}

}  // namespace
}  // namespace QuillLive
