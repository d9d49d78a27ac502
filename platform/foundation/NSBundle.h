// A folder of resources: files by name and texts by language.
//
// Files lie in the folder itself or in one of its immediate subfolders; the folder's own files come
// first, then the subfolders in alphabetical order. Texts lie in <language>.lproj/<table>.strings.
// The folder is read once, on the first question; files that come later are not seen.
// Safe from any thread.
#pragma once

#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSObject.h"

#include <QHash>

#include <mutex>

class NSBundle final : public NSObject {
public:
    // The languages are asked in order, then English. A folder that does not exist is an empty bundle.
    explicit NSBundle(
        NSString folder, const std::vector<NSString>& languages = NSLocale::preferredLanguages());
    ~NSBundle() override;

    // The application's own: beside the executable in "resources", as in the build tree, else installed in
    // "../share/<name of the executable>/resources".
    static std::shared_ptr<NSBundle> mainBundle();

    const NSString& resourcePath() const { return m_folder; }

    // pathForResource:ofType: — nil when there is no such file. A nil or empty type stands for a name that is
    // complete. A name is a file's name alone: one with a folder in it is not found.
    NSString pathForResource(const NSString& name, const NSString& type) const;
    // URLForResource:withExtension:
    NSURL urlForResource(const NSString& name, const NSString& extension) const;

    // localizedStringForKey:value:table: — without a translation the value, and where that is empty the
    // key. A nil or empty table is "Localizable".
    NSString localizedStringForKey(const NSString& key, const NSString& value, const NSString& table) const;

    // Puts a bundle in the main bundle's place until the guard goes; guards nest.
    class [[nodiscard]] MainReplacement {
    public:
        explicit MainReplacement(std::shared_ptr<NSBundle>);
        ~MainReplacement();
        MainReplacement(const MainReplacement&) = delete;
        MainReplacement& operator=(const MainReplacement&) = delete;

    private:
        std::shared_ptr<NSBundle> m_previous;
    };

private:
    using Table = QHash<NSString, NSString>;

    static QHash<NSString, NSString> indexOf(const NSString& folder);
    Table loadTable(const NSString& name) const;

    const NSString m_folder;
    std::vector<NSString> m_languages; // with their fallbacks, English last
    mutable std::once_flag m_indexOnce;
    mutable QHash<NSString, NSString> m_index; // file name to path
    mutable std::mutex m_tablesMutex;
    mutable QHash<NSString, Table> m_tables;
};
