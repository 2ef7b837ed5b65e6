#include "page_reader.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base64.h"

namespace QuillLive {

namespace {

using namespace std::chrono_literals;

// As many frames as the library reads.
constexpr std::size_t kMostFrames = 1000;
constexpr unsigned int kDeepestFrame = 100;

constexpr auto kTimeToRead = 30s;   // for all frames
constexpr auto kTimeToAnswer = 5s;  // for one question; a script that runs does not let it through

// What the browser itself writes into a frame whose document it cannot get.
constexpr std::string_view kErrorPage = "chrome-error:";

constexpr const char* kUtf8Mark = "\xEF\xBB\xBF";

// A NUL would end the markup for who takes it as a string.
constexpr const char* kBodyScript =
    "document.body ? document.body.outerHTML.replaceAll('\\0', '\\ufffd') : null";

// The elements that hold frames, in document order; shadow trees follow the elements that they hang on.
constexpr const char* kFramesScript = R"((() => {
    const found = [];
    const visit = root => {
        for (const element of root.querySelectorAll('*')) {
            if (['iframe', 'frame', 'object', 'embed', 'fencedframe'].includes(element.localName)) {
                found.push(element);
            }
            if (element.shadowRoot) visit(element.shadowRoot);
        }
    };
    visit(document);
    return found.slice(0, 2000);
})())";

}  // namespace

bool PageReader::Read(LiveDocument& document) {
    deadline_ = Clock::now() + kTimeToRead;
    if (ReadFrame(page_.MainFrame(), page_.MainSession(), 0, document)) return true;
    // A script that does not end: the text may be there all the same.
    connection_.Send(page_.MainSession(), "Runtime.terminateExecution");
    document = {};
    known_sessions_.clear();
    return ReadFrame(page_.MainFrame(), page_.MainSession(), 0, document);
}

bool PageReader::ReadFrame(const std::string& frame, const std::string& session, unsigned int depth,
                           LiveDocument& document) {
    LearnFrames(session);
    const Frame& about = frames_[frame];
    if (about.url.starts_with(kErrorPage)) return true;
    document.url = about.url;
    document.mime_type = about.mime_type;
    if (want_source_) ReadSource(session, about.loader, document);

    Json world;
    if (!Ask(session, "Page.createIsolatedWorld", {{"frameId", frame}, {"worldName", "quill"}}, world)) {
        return document.source.has_value();
    }
    const bool read = ReadBody(session, world, document);
    if (!read && !document.source) return false;
    if (depth == kDeepestFrame) return true;
    for (const std::string& child : ListFrames(frame, session, world)) {
        if (frames_read_ == kMostFrames) break;
        ++frames_read_;
        const auto elsewhere = page_.FramesElsewhere().find(child);
        const bool moved = elsewhere != page_.FramesElsewhere().end();
        ReadFrame(child, moved ? std::string(elsewhere->second.session) : session, depth + 1,
                  document.frames.emplace_back());
    }
    return true;
}

bool PageReader::ReadBody(const std::string& session, const Json& world, LiveDocument& document) {
    Json result;
    if (!Evaluate(session, world, kBodyScript, true, result)) return false;
    const Json& markup = Member(result, "value");
    if (markup.is_string()) document.body = markup.get<std::string>();
    return true;
}

// The browser keeps a document that has come whole as text that it has decoded, by what the server and the
// page say about it; the mark keeps others from decoding it once more. One that is still coming is there as
// bytes.
void PageReader::ReadSource(const std::string& session, const std::string& loader, LiveDocument& document) {
    Json result;
    if (Ask(session, "Network.getResponseBody", {{"requestId", loader}}, result)) {
        const std::string body = Text(result, "body");
        document.source = Flag(result, "base64Encoded") ? DecodeBase64(body) : kUtf8Mark + body;
    } else if (Ask(session, "Network.streamResourceContent", {{"requestId", loader}}, result)) {
        document.source = DecodeBase64(Text(result, "bufferedData"));
    }
    if (document.source && document.source->empty()) document.source.reset();
}

// In document order. Frames that no script may see, in closed shadow trees, come last.
std::vector<std::string> PageReader::ListFrames(const std::string& frame, const std::string& session,
                                                const Json& world) {
    std::vector<std::string> list = FrameElements(session, world);
    const auto add = [&](const std::string& child) {
        if (std::find(list.begin(), list.end(), child) == list.end()) list.push_back(child);
    };
    for (const std::string& child : frames_[frame].children) add(child);
    for (const auto& [child, about] : page_.FramesElsewhere()) {
        if (about.parent == frame) add(child);
    }
    return list;
}

std::vector<std::string> PageReader::FrameElements(const std::string& session, const Json& world) {
    std::vector<std::string> list;
    Json elements;
    Json properties;
    if (!Evaluate(session, world, kFramesScript, false, elements) ||
        !Ask(session, "Runtime.getProperties",
             {{"objectId", Text(elements, "objectId")}, {"ownProperties", true}}, properties)) {
        return list;
    }
    for (const Json& property : Member(properties, "result")) {
        const std::string element = Text(Member(property, "value"), "objectId");
        Json described;
        if (element.empty() || !Flag(property, "enumerable") ||
            !Ask(session, "DOM.describeNode", {{"objectId", element}}, described)) {
            continue;
        }
        std::string child = Text(Member(described, "node"), "frameId");
        if (!child.empty()) list.push_back(std::move(child));
        if (list.size() == kMostFrames) break;
    }
    return list;
}

void PageReader::LearnFrames(const std::string& session) {
    if (!known_sessions_.insert(session).second) return;
    Json result;
    if (!Ask(session, "Page.getFrameTree", Json::object(), result)) return;
    std::vector<const Json*> trees = {&Member(result, "frameTree")};
    while (!trees.empty()) {
        const Json& tree = *trees.back();
        trees.pop_back();
        const Json& about = Member(tree, "frame");
        Frame& frame = frames_[Text(about, "id")];
        frame = {Text(about, "url"), Text(about, "mimeType"), Text(about, "loaderId"), {}};
        for (const Json& child : Member(tree, "childFrames")) {
            frame.children.push_back(Text(Member(child, "frame"), "id"));
            trees.push_back(&child);
        }
    }
}

bool PageReader::Ask(const std::string& session, const char* method, Json parameters, Json& result) {
    Connection::Answer answer;
    const Clock::time_point deadline = std::min(deadline_, Clock::now() + kTimeToAnswer);
    const Connection::Outcome outcome =
        connection_.Call(session, method, std::move(parameters), deadline, answer);
    result = std::move(answer.value);
    return outcome == Connection::Outcome::kDone && answer.good;
}

// Scripts run in a world of their own, where the page cannot have changed what they call.
bool PageReader::Evaluate(const std::string& session, const Json& world, const char* script, bool by_value,
                          Json& result) {
    Json answer;
    if (!Ask(session, "Runtime.evaluate",
             {{"expression", script},
              {"contextId", Member(world, "executionContextId")},
              {"returnByValue", by_value}},
             answer) ||
        answer.contains("exceptionDetails")) {
        return false;
    }
    result = Member(answer, "result");
    return true;
}

}  // namespace QuillLive
