#include "platform.h"
#include "run.h"

// The shells of Windows leave it to the program to expand "*.html"; the runtime does it when asked to.
extern "C" {
int _dowildcard = -1;
}

int wmain(int argc, wchar_t** argv) {
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(QuillTool::TextFromPath(argv[i]));
    return QuillTool::Main(std::move(arguments));
}
