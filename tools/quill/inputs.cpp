#include "inputs.h"

#include <algorithm>
#include <system_error>

#include "page_ending.h"
#include "platform.h"

namespace QuillTool {

namespace {

namespace fs = std::filesystem;

class Search {
public:
    explicit Search(Console& console) : console_(console) {}

    std::vector<Input> Run(const std::vector<std::string>& arguments) {
        for (const std::string& argument : arguments) AddArgument(argument);
        return std::move(found_);
    }

private:
    void AddArgument(const std::string& argument) {
        if (argument == kStandardInput) {
            found_.push_back({argument, {}, "stdin"});
            return;
        }
        const fs::path path = PathFromText(argument);
        std::error_code error;
        if (!fs::is_directory(path, error)) {
            found_.push_back({argument, path, path.filename()});
            return;
        }
        const std::size_t before = found_.size();
        if (AddFolder(path, {}) && found_.size() == before)
            console_.Note(argument, "no pages in this folder");
    }

    // False when something in the folder could not be read.
    bool AddFolder(const fs::path& folder, const fs::path& place) {
        std::vector<fs::directory_entry> entries;
        bool readable = List(folder, entries);
        for (const fs::directory_entry& entry : entries) {
            const fs::path name = entry.path().filename();
            std::error_code error;
            if (fs::is_directory(entry.symlink_status(error))) {
                readable = AddFolder(entry.path(), place / name) && readable;
            } else if (IsPageName(TextFromPath(name)) && MayBeRead(entry)) {
                found_.push_back({TextFromPath(entry.path()), entry.path(), place / name});
            }
        }
        return readable;
    }

    bool List(const fs::path& folder, std::vector<fs::directory_entry>& entries) {
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) entries.push_back(*entry);
        if (error) console_.Error(TextFromPath(folder), error.message());
        std::sort(entries.begin(), entries.end());
        return !error;
    }

    // Pipes and devices in a folder would block, and folders behind a link could lead in circles. A broken
    // link is kept: reading it says what is wrong.
    static bool MayBeRead(const fs::directory_entry& entry) {
        std::error_code error;
        const fs::file_status status = entry.status(error);
        return !fs::exists(status) || fs::is_regular_file(status);
    }

    Console& console_;
    std::vector<Input> found_;
};

}  // namespace

std::vector<Input> FindInputs(const std::vector<std::string>& arguments, Console& console) {
    return Search(console).Run(arguments);
}

}  // namespace QuillTool
