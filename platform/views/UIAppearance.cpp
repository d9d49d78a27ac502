#include "platform/views/UIAppearance.h"

#include "platform/views/UIView.h"
#include "platform/views/UIViewOwner.h"

#include <algorithm>
#include <unordered_map>

// Everything that is recorded, and what of it concerns which class: worked out when the first view of the
// class comes, and again after a new record.
struct UIAppearance::Book {
    using RecordsPointer = std::shared_ptr<const Records>;

    Records records; // those for anywhere first, each part in the order of recording
    std::unordered_map<std::type_index, RecordsPointer> recordsOfClass; // null for none

    const RecordsPointer& recordsFor(const UIView& view)
    {
        const auto [entry, isNew] = recordsOfClass.try_emplace(typeid(view));
        if (isNew)
            entry->second = select(view);
        return entry->second;
    }

private:
    RecordsPointer select(const UIView& view) const
    {
        Records selected;
        std::copy_if(records.begin(), records.end(), std::back_inserter(selected),
            [&](const auto& record) { return record->view.includes(view); });
        return selected.empty() ? nullptr : std::make_shared<const Records>(std::move(selected));
    }
};

std::unique_ptr<UIAppearance::Book>& UIAppearance::book()
{
    // Recording starts in load hooks, which may run before this file's own constants exist.
    static auto theBook = std::make_unique<Book>();
    return theBook;
}

bool UIAppearance::Record::replaces(const Record& other) const
{
    return view == other.view && container == other.container && setting == other.setting;
}

bool UIAppearance::Record::reaches(const UIView& inside) const
{
    if (!container)
        return true;
    for (const UIView* ancestor = &inside; ancestor; ancestor = ancestor->superview()) {
        if (ancestor != &inside && container->includes(*ancestor))
            return true;
        if (ancestor->owner() && container->includes(*ancestor->owner()))
            return true;
    }
    return false;
}

void UIAppearance::record(Record record)
{
    static UIAppearanceNotes::RecordID lastID = UIAppearanceNotes::byCode;
    record.id = ++lastID;
    Records& records = book()->records;
    std::erase_if(records, [&](const auto& earlier) { return record.replaces(*earlier); });
    const auto place = record.container
        ? records.end()
        : std::find_if(records.begin(), records.end(),
            [](const auto& earlier) { return earlier->container.has_value(); });
    records.insert(place, std::make_shared<const Record>(std::move(record)));
    book()->recordsOfClass.clear();
}

void UIAppearance::applyTo(UIView& view)
{
    if (book()->records.empty())
        return;
    const auto concerning = book()->recordsFor(view); // kept: a setter may record something
    if (!concerning)
        return;
    Records reaching;
    std::copy_if(concerning->begin(), concerning->end(), std::back_inserter(reaching),
        [&](const auto& record) { return record->reaches(view); });
    for (auto record = reaching.begin(); record != reaching.end(); ++record) {
        const UIAppearanceSetting& setting = (*record)->setting;
        const bool isOverridden = std::any_of(
            record + 1, reaching.end(), [&](const auto& later) { return later->setting == setting; });
        if (!isOverridden && view.appearanceNotes().accepts(setting, (*record)->id))
            view.appearanceNotes().applying(setting, (*record)->id, [&] { (*record)->apply(view); });
    }
}

UIAppearance::Replacement::Replacement()
    : m_replaced(std::exchange(book(), std::make_unique<Book>()))
{
}

UIAppearance::Replacement::~Replacement() { book() = std::move(m_replaced); }
