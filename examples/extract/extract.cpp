// Prints the main content of a page: extract page.html
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <quill/quill.h>

int main(int argc, char** argv) {
    std::ifstream file(argc > 1 ? argv[1] : "", std::ios::binary);
    const std::string page(std::istreambuf_iterator<char>(file), {});
    ZOTFile::MemoryBuffer bytes(page.data(), static_cast<unsigned int>(page.size()), 0);
    std::u16string text;
    if (!QuillNS::Beautify(bytes, ZOT::kCharsetNone, text, nullptr, nullptr)) return 1;
    std::cout << std::filesystem::path(text).string();  // UTF-16 to UTF-8
}
