#pragma once

// The strings of OLE Automation, watched where the platform lets us.

// Strings that nobody has freed; -1 where they cannot be counted.
int LiveStrings();

// Whether there shall be no memory for new strings. Returns false where that cannot be arranged.
bool LetNewStringsFail(bool fail);
