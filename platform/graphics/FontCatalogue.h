// Which of the installed fonts the process knows.
//
// To read them all, and the system's rules about them, takes a third of a launch. Most texts need a few
// faces, so only these families are read at first, without rules, and the rest with the first text that has a
// character which they lack. From then on the system's rules choose what stands in for a missing letter.
// Where one of the families is not installed, or where the environment names a configuration of fonts, all is
// read at once.
//
// What is known holds for the whole process. Any thread may use a catalogue.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

class FontCatalogue final {
public:
    // Letters that another family lacks are taken from the first one.
    explicit FontCatalogue(std::vector<NSString> families);
    FontCatalogue(const FontCatalogue&) = delete;
    FontCatalogue& operator=(const FontCatalogue&) = delete;
    ~FontCatalogue();

    // Whether all fonts are known.
    bool isWhole() const { return m_isWhole; }
    // Reads the rest where the text in that family needs it. To be called before the text's font is made.
    void readFor(const NSString& text, const NSString& family);
    void readAll();

private:
    class Families;

    const std::unique_ptr<const Families> m_families; // what is read at first
    std::mutex m_reading;
    std::atomic<bool> m_isWhole;
};
