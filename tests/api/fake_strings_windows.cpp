#include "api/fake_strings.h"

int LiveStrings() {
    return -1;
}

bool LetNewStringsFail(bool) {
    return false;
}
