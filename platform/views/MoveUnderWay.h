// In force while a view goes from one place in a tree to another and those whom it concerns are told.
//
// Whoever is told may move further views, so that moves nest. While none is under way everybody has been told
// of everything.
#pragma once

class [[nodiscard]] MoveUnderWay {
public:
    MoveUnderWay() { ++s_count; }
    ~MoveUnderWay() { --s_count; }
    MoveUnderWay(const MoveUnderWay&) = delete;
    MoveUnderWay& operator=(const MoveUnderWay&) = delete;

    static bool isAny() { return s_count > 0; }
    // For the one that asks.
    static bool isTheOnlyOne() { return s_count == 1; }

private:
    static inline int s_count = 0;
};
