// Which of a view's looks were set by code, and which came from its class's recorded ones.
//
// A setter that may be recorded for a class (see UIAppearance) begins with one line,
//     appearanceNotes().noteSetting(&UINavigationBar::setBarTintColor);
// or, where one argument tells its settings apart,
//     appearanceNotes().noteSetting(&UIButton::setImage, state);
// An override that calls its base class needs no line of its own. What a class gives itself at the start is
// no setting: init() writes its members.
#pragma once

#include "platform/foundation/MethodIdentity.h"

#include <cstdint>
#include <type_traits>
#include <vector>

// One thing that can be set: a setter, and for which state or the like. Equal for a virtual setter and its
// overrides; compared only within one view, where a place in the table of virtual functions is unique.
class UIAppearanceSetting {
public:
    template <typename Class, typename Value>
    explicit UIAppearanceSetting(void (Class::*setter)(Value))
        : m_setter(setter)
    {
    }
    template <typename Class, typename Value, typename Selector>
    UIAppearanceSetting(
        void (Class::*setter)(Value, Selector), std::type_identity_t<std::decay_t<Selector>> selector)
        : m_setter(setter)
        , m_selector(static_cast<std::int64_t>(selector))
    {
    }

    bool operator==(const UIAppearanceSetting&) const = default;

private:
    MethodIdentity m_setter;
    std::int64_t m_selector = 0;
};

class UIAppearanceNotes {
public:
    using RecordID = std::uint64_t;
    static constexpr RecordID byCode = 0;

    // Says that the setter is being called. While its recorded value is being applied this is not noted;
    // whatever else is set meanwhile counts as set by code.
    template <typename... Parts> void noteSetting(Parts... parts)
    {
        const UIAppearanceSetting setting(parts...);
        if (!m_applied || *m_applied != setting)
            note(setting, byCode);
    }

    // Whether the record's value is to be applied: not over one that code has set, nor twice in a row.
    bool accepts(const UIAppearanceSetting& setting, RecordID record) const;
    // Calls apply() as the application of the record.
    template <typename Apply>
    void applying(const UIAppearanceSetting& setting, RecordID record, const Apply& apply)
    {
        const UIAppearanceSetting* const before = m_applied;
        m_applied = &setting;
        note(setting, record);
        apply();
        m_applied = before;
    }

private:
    struct Note {
        UIAppearanceSetting setting;
        RecordID source;
    };

    void note(const UIAppearanceSetting& setting, RecordID source);

    std::vector<Note> m_notes; // few: what somebody really set
    const UIAppearanceSetting* m_applied = nullptr;
};
