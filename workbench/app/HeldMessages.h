#pragma once

#include <QString>

/// Holds back the warnings of the log as long as it lives, for who wants to tell of a failure once
/// and in words of his own. One at a time; what is no warning passes.
class HeldMessages {
public:
    HeldMessages();
    ~HeldMessages();
    HeldMessages(const HeldMessages&) = delete;
    HeldMessages& operator=(const HeldMessages&) = delete;

    /// Empty if there was none.
    QString first() const;
};
