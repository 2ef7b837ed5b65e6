#pragma once

#include <filesystem>
#include <string>

namespace QuillTool {

// The folder that --output names. Nothing is ever written outside it, even if it holds links that lead
// elsewhere. Any number of threads may write different files.
class OutputFolder {
public:
    explicit OutputFolder(const std::string& name);

    // These return what is wrong, in words for people, or nothing.

    // Makes the folder and those above it where they are missing. Comes before the first Write.
    std::string Prepare();

    // Writes `bytes` as the file `place`, which is a relative path without "..", and makes the folders that
    // it needs. A file of that name is replaced; so is a link, and not the file behind it.
    std::string Write(const std::filesystem::path& place, const std::string& bytes) const;

private:
    std::string EnterFolders(const std::filesystem::path& way, std::filesystem::path& folder) const;

    std::filesystem::path folder_;  // without links once it is prepared
};

}  // namespace QuillTool
