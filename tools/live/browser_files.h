#pragma once

#include <string>

namespace QuillLive {

// A new folder below the system's folder for temporary files, for all that the browser writes. It is removed,
// with all that is in it, when the object goes.
class BrowserFiles {
public:
    BrowserFiles() = default;
    BrowserFiles(const BrowserFiles&) = delete;  // one owner
    BrowserFiles& operator=(const BrowserFiles&) = delete;
    ~BrowserFiles();

    // Makes the folder. Returns what is wrong, in words for people, or nothing.
    std::string Make();

    const std::string& Folder() const { return folder_; }  // for temporary files
    std::string Profile() const { return folder_ + "/profile"; }
    std::string Messages() const { return folder_ + "/messages"; }

    // The last lines of the messages, as far as there are any.
    std::string LastMessages() const;

private:
    std::string folder_;  // empty: none was made
};

}  // namespace QuillLive
