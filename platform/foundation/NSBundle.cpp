#include "platform/foundation/NSBundle.h"

#include "platform/foundation/FileProblem.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/StringsTable.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

std::mutex mainBundleMutex;

std::shared_ptr<NSBundle>& mainBundleInForce()
{
    static std::shared_ptr<NSBundle> bundle;
    return bundle;
}

NSString mainResourceFolder()
{
    const QFileInfo executable(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    const QDir folder = executable.dir();
    NSString beside = folder.filePath(QStringLiteral("resources"));
    if (QFileInfo(beside).isDir())
        return beside;
    const NSString installed = QStringLiteral("../share/%1/resources").arg(executable.fileName());
    return QDir::cleanPath(folder.filePath(installed));
}

std::vector<NSString> withFallbacks(const std::vector<NSString>& languages)
{
    std::vector<NSString> tags;
    const auto add = [&](const NSString& language) {
        for (const NSString& tag : NSLocale::fallbacksOf(language))
            if (std::find(tags.begin(), tags.end(), tag) == tags.end())
                tags.push_back(tag);
    };
    std::for_each(languages.begin(), languages.end(), add);
    add(QStringLiteral("en"));
    return tags;
}

} // namespace

NSBundle::NSBundle(NSString folder, const std::vector<NSString>& languages)
    : m_folder(std::move(folder))
    , m_languages(withFallbacks(languages))
{
}

NSBundle::~NSBundle() = default;

std::shared_ptr<NSBundle> NSBundle::mainBundle()
{
    const std::lock_guard lock(mainBundleMutex);
    auto& bundle = mainBundleInForce();
    if (!bundle)
        bundle = make<NSBundle>(mainResourceFolder());
    return bundle;
}

NSBundle::MainReplacement::MainReplacement(std::shared_ptr<NSBundle> bundle)
{
    const std::lock_guard lock(mainBundleMutex);
    m_previous = std::exchange(mainBundleInForce(), std::move(bundle));
}

NSBundle::MainReplacement::~MainReplacement()
{
    const std::lock_guard lock(mainBundleMutex);
    mainBundleInForce() = std::move(m_previous);
}

QHash<NSString, NSString> NSBundle::indexOf(const NSString& folder)
{
    QHash<NSString, NSString> index;
    const auto addFilesOf = [&](const QDir& directory) {
        for (const QFileInfo& file : directory.entryInfoList(QDir::Files, QDir::Name))
            if (!index.contains(file.fileName()))
                index.insert(file.fileName(), file.absoluteFilePath());
    };
    const QDir directory(folder);
    if (folder.isEmpty() || !directory.exists())
        return index; // a null folder would otherwise be the current one
    addFilesOf(directory);
    for (const QFileInfo& subfolder : directory.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        if (subfolder.suffix() != QLatin1String("lproj"))
            addFilesOf(QDir(subfolder.filePath()));
    return index;
}

NSString NSBundle::pathForResource(const NSString& name, const NSString& type) const
{
    if (name.isEmpty())
        return {};
    std::call_once(m_indexOnce, [this] { m_index = indexOf(m_folder); });
    return m_index.value(type.isEmpty() ? name : name + u'.' + type);
}

NSURL NSBundle::urlForResource(const NSString& name, const NSString& extension) const
{
    const NSString path = pathForResource(name, extension);
    return path.isNull() ? NSURL() : NSURL::fromLocalFile(path);
}

NSString NSBundle::localizedStringForKey(
    const NSString& key, const NSString& value, const NSString& table) const
{
    const NSString name = table.isEmpty() ? QStringLiteral("Localizable") : table;
    NSString text;
    {
        const std::lock_guard lock(m_tablesMutex);
        auto found = m_tables.constFind(name);
        if (found == m_tables.constEnd())
            found = m_tables.insert(name, loadTable(name));
        text = found->value(key);
    }
    if (!text.isNull())
        return text;
    return value.isEmpty() ? key : value;
}

// Every language's table, the most wanted one on top: what is not translated shows in the next language.
NSBundle::Table NSBundle::loadTable(const NSString& name) const
{
    Table merged;
    if (name.contains(u'/') || m_folder.isEmpty())
        return merged;
    for (auto language = m_languages.rbegin(); language != m_languages.rend(); ++language) {
        const NSString path = QStringLiteral("%1/%2.lproj/%3.strings").arg(m_folder, *language, name);
        const StringsTable table = StringsTable::parse(
            dataWithContentsOfURL(NSURL::fromLocalFile(path), StringsTable::largestFile));
        if (table.error)
            FileProblem::tell(path, table.error->line, table.error->message);
        merged.insert(table.entries);
    }
    return merged;
}
