#include "run.h"

int main(int argc, char** argv) {
    return QuillLive::Main(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
}
