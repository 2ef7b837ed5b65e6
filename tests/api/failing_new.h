#pragma once

// Lets the `n`th process-wide `new` from its construction on fail; later ones succeed again.
class FailNthNew {
public:
    explicit FailNthNew(int n);
    ~FailNthNew();
    FailNthNew(const FailNthNew&) = delete;  // there is one `new`
    FailNthNew& operator=(const FailNthNew&) = delete;

    bool Happened() const;
};

// What `new` has handed out and `delete` has not taken back.
int LiveNews();
