#include "platform/views/UIAppearanceNotes.h"

#include <algorithm>

bool UIAppearanceNotes::accepts(const UIAppearanceSetting& setting, RecordID record) const
{
    return std::none_of(m_notes.begin(), m_notes.end(), [&](const Note& note) {
        return note.setting == setting && (note.source == byCode || note.source == record);
    });
}

void UIAppearanceNotes::note(const UIAppearanceSetting& setting, RecordID source)
{
    const auto known = std::find_if(
        m_notes.begin(), m_notes.end(), [&](const Note& note) { return note.setting == setting; });
    if (known == m_notes.end())
        m_notes.push_back({ setting, source });
    else
        known->source = source;
}
