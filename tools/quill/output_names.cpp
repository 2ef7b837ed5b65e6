#include "output_names.h"

#include <unordered_map>
#include <unordered_set>

#include "page_ending.h"
#include "platform.h"

namespace QuillTool {

namespace {

class NameGiver {
public:
    explicit NameGiver(const std::string& ending) : ending_(ending) {}

    std::filesystem::path NameFor(const std::filesystem::path& place) {
        const std::string name = TextFromPath(place.filename());
        const std::filesystem::path folder = place.parent_path();
        std::filesystem::path file = folder / PathFromText(std::string(WithoutPageEnding(name)) + ending_);
        if (TakeOver(file)) return file;
        file = folder / PathFromText(name + ending_);
        if (TakeOver(file)) return file;
        return Numbered(file, folder, name);
    }

private:
    // `file` is the whole name, which is taken; the count goes on where it stopped for that name.
    std::filesystem::path Numbered(std::filesystem::path file, const std::filesystem::path& folder,
                                   const std::string& name) {
        unsigned int& number = numbers_[Key(file)];
        number = number == 0 ? 2 : number;
        do {
            file = folder / PathFromText(name + "-" + std::to_string(number++) + ending_);
        } while (!TakeOver(file));
        return file;
    }

    bool TakeOver(const std::filesystem::path& file) { return taken_.insert(Key(file)).second; }

    static std::string Key(const std::filesystem::path& file) { return Lowered(TextFromPath(file)); }

    const std::string& ending_;
    std::unordered_set<std::string> taken_;
    std::unordered_map<std::string, unsigned int> numbers_;
};

}  // namespace

std::vector<std::filesystem::path> OutputNames(const std::vector<Input>& inputs, const std::string& ending) {
    NameGiver giver(ending);
    std::vector<std::filesystem::path> names;
    names.reserve(inputs.size());
    for (const Input& input : inputs) names.push_back(giver.NameFor(input.place));
    return names;
}

}  // namespace QuillTool
