#include "terminal/quotes/UserMarket.h"

#include "platform/Text.h"
#include "platform/ui/TextBridge.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/BarFile.h"
#include "terminal/quotes/BarPeriods.h"
#include "terminal/quotes/CsvReader.h"
#include "terminal/quotes/CsvValues.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <charconv>

namespace ta::terminal {
namespace {

constexpr std::string_view kIndexHeading = "id,name,prices,step";
constexpr int kLockWaitMs = 5000;
constexpr std::size_t kLongestId = 20;

bool Fail(QString* error, const QString& reason) {
    if (error != nullptr) {
        *error = reason;
    }
    return false;
}

const char* KindOf(const Symbol& symbol) {
    if (symbol.hasMinutes) {
        return "minute";
    }
    return symbol.hasMonthly ? "monthly" : "daily";
}

bool SetKind(std::string_view kind, Symbol* symbol) {
    symbol->hasMinutes = kind == "minute";
    symbol->hasMonthly = kind == "monthly";
    symbol->hasDaily = kind == "daily";
    return symbol->hasMinutes || symbol->hasMonthly || symbol->hasDaily;
}

const char* KindOf(const BarSeries& bars) {
    const auto hasTimeOfDay = [](const Bar& bar) { return SecondsOfDay(bar.time) != 0; };
    if (std::ranges::any_of(bars, hasTimeOfDay)) {
        return "minute";
    }
    return bars.size() > 1 && MonthlyBars(bars).size() == bars.size() ? "monthly" : "daily";
}

std::string StepText(double step) {
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), step).ptr;
    return {buffer.data(), end};
}

std::string IndexLine(const Symbol& symbol) {
    return symbol.id + ',' + CsvField(text::ToUtf8(symbol.chineseName)) + ',' + KindOf(symbol) +
           ',' + StepText(symbol.priceStep) + '\n';
}

// The letters, digits, "-" and "_" of a file's name, upper-case; "FILE" when it has none.
CString IdFromFileName(const QString& fileName) {
    CString id;
    for (const QChar c : QFileInfo(fileName).completeBaseName().toUpper()) {
        const char ascii = c.unicode() < 0x80 ? c.toLatin1() : '\0';
        if ((ascii >= '0' && ascii <= '9') || (ascii >= 'A' && ascii <= 'Z') ||
            (ascii == '-' && !id.empty())) {
            id += ascii;
        } else if (!id.empty() && (ascii == '_' || ascii == ' ' || ascii == '.')) {
            id += '_';
        }
    }
    return id.empty() ? "FILE" : id.substr(0, kLongestId);
}

}  // namespace

QString DefaultUserFolder() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath("my-files");
}

UserMarket::UserMarket(const QString& folder) : m_folder(folder) {
    Reload();
}

Market UserMarket::Description() {
    return {kId, text::FromUtf8("我的檔案"), "My files"};
}

QString UserMarket::IndexPath() const {
    return QDir(m_folder).filePath("index.csv");
}

QString UserMarket::BarsPath(const CString& id) const {
    return QDir(m_folder).filePath(QString::fromStdString(id) + ".bars");
}

std::vector<const Symbol*> UserMarket::Symbols() const {
    std::vector<const Symbol*> symbols;
    for (const auto& symbol : m_symbols) {
        symbols.push_back(symbol.get());
    }
    return symbols;
}

const Symbol* UserMarket::Find(const CString& id) const {
    const auto found = std::ranges::find(m_symbols, id, [](const auto& s) { return s->id; });
    return found == m_symbols.end() ? nullptr : found->get();
}

void UserMarket::AddProblem(std::size_t line, const QString& fault) {
    m_problems.append(Tr("IDS_TERMINAL-QUOTES_AT_LINE").arg(IndexPath()).arg(line).arg(fault));
}

// false for a line that is none of an index.
bool UserMarket::TakeIndexLine(const std::vector<std::string_view>& fields) {
    Symbol symbol;
    symbol.market = kId;
    if (fields.size() != 4 || !IsSymbolId(fields[0]) || !SetKind(fields[2], &symbol) ||
        ParsePrice(fields[3], &symbol.priceStep) != CsvFault::None || symbol.priceStep <= 0) {
        return false;
    }
    symbol.id = CString(fields[0]);
    symbol.chineseName = symbol.englishName = text::FromUtf8(fields[1]);
    const QString bars = BarsPath(symbol.id);
    QString error;
    if (CheckBarFile(bars, &error)) {
        m_symbols.push_back(std::make_unique<Symbol>(symbol));
    } else {
        m_problems.append(error);
        if (QFile::exists(bars)) {
            m_unreadable.push_back(symbol);
        }
    }
    return true;
}

void UserMarket::ReadIndex() {
    QFile file(IndexPath());
    if (!file.exists()) {
        return;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        m_indexDamaged = true;
        m_problems.append(
            Tr("IDS_TERMINAL-QUOTES_FILE_UNREADABLE").arg(file.fileName(), file.errorString()));
        return;
    }
    const QByteArray bytes = file.readAll();
    CsvReader reader(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    CsvReader heading(kIndexHeading);
    heading.Next();
    if (!reader.Next() || reader.Fields() != heading.Fields()) {
        m_indexDamaged = true;
        AddProblem(1, Tr("IDS_TERMINAL-QUOTES_USER_INDEX_DAMAGED"));
        return;
    }
    while (reader.Next()) {
        if (reader.QuoteOpen() || !TakeIndexLine(reader.Fields())) {
            m_indexDamaged = true;
            AddProblem(reader.Line(), Tr("IDS_TERMINAL-QUOTES_USER_INDEX_DAMAGED"));
        }
    }
}

void UserMarket::Reload() {
    m_problems.clear();
    m_unreadable.clear();
    m_indexDamaged = false;
    std::vector<std::unique_ptr<Symbol>> before;
    before.swap(m_symbols);
    ReadIndex();
    // A symbol that is still there stays the same object.
    for (auto& symbol : m_symbols) {
        const auto isSame = [&symbol](const auto& old) { return old && old->id == symbol->id; };
        const auto old = std::ranges::find_if(before, isSame);
        if (old != before.end()) {
            **old = *symbol;
            symbol = std::move(*old);
        }
    }
}

// An index that could not be read in full must not be overwritten.
bool UserMarket::PutDamagedIndexAside(QString* error) {
    for (int i = 1; m_indexDamaged; ++i) {
        const QString aside = QDir(m_folder).filePath(QString("index.damaged-%1.csv").arg(i));
        if (QFile::exists(aside)) {
            continue;
        }
        QFile file(IndexPath());
        if (!file.rename(aside)) {
            return Fail(
                error,
                Tr("IDS_TERMINAL-QUOTES_FILE_UNWRITABLE").arg(file.fileName(), file.errorString()));
        }
        m_indexDamaged = false;
    }
    return true;
}

bool UserMarket::WriteIndex(QString* error) {
    if (!PutDamagedIndexAside(error)) {
        return false;
    }
    std::string text = std::string(kIndexHeading) + '\n';
    for (const auto& symbol : m_symbols) {
        text += IndexLine(*symbol);
    }
    for (const Symbol& symbol : m_unreadable) {
        text += IndexLine(symbol);
    }
    QSaveFile file(IndexPath());
    const auto length = static_cast<qint64>(text.size());
    // The commit alone does not tell that the last buffer did not fit the disk.
    if (file.open(QIODevice::WriteOnly) && file.write(text.data(), length) == length &&
        file.flush() && file.commit()) {
        return true;
    }
    return Fail(error,
                Tr("IDS_TERMINAL-QUOTES_FILE_UNWRITABLE").arg(file.fileName(), file.errorString()));
}

// The files count as well: one that the index does not name is not written over.
CString UserMarket::UniqueId(const QString& fileName) const {
    const CString base = IdFromFileName(fileName);
    CString id = base;
    for (int i = 2; Find(id) != nullptr || QFile::exists(BarsPath(id)); ++i) {
        id = base + '-' + std::to_string(i);
    }
    return id;
}

bool UserMarket::Lock(QLockFile* lock, QString* error) {
    if (!QDir().mkpath(m_folder) || !lock->tryLock(kLockWaitMs)) {
        return Fail(error, Tr("IDS_TERMINAL-QUOTES_USER_FOLDER_LOCKED").arg(m_folder));
    }
    Reload();
    return true;
}

const Symbol* UserMarket::Add(const QString& fileName, const BarSeries& bars, double priceStep,
                              QString* error) {
    if (bars.empty()) {
        Fail(error, Tr("IDS_TERMINAL-QUOTES_CSV_NO_ROWS"));
        return nullptr;
    }
    QLockFile lock(QDir(m_folder).filePath("index.lock"));
    if (!Lock(&lock, error)) {
        return nullptr;
    }
    auto symbol = std::make_unique<Symbol>();
    symbol->market = kId;
    symbol->id = UniqueId(fileName);
    symbol->chineseName = symbol->englishName =
        ui::FromQString(QFileInfo(fileName).completeBaseName());
    symbol->priceStep = priceStep;
    SetKind(KindOf(bars), symbol.get());
    const QString path = BarsPath(symbol->id);
    if (!WriteBarFile(path, bars, error)) {
        return nullptr;
    }
    m_symbols.push_back(std::move(symbol));
    if (!WriteIndex(error)) {
        m_symbols.pop_back();
        QFile::remove(path);
        return nullptr;
    }
    return m_symbols.back().get();
}

bool UserMarket::Remove(const CString& id, QString* error) {
    QLockFile lock(QDir(m_folder).filePath("index.lock"));
    if (!Lock(&lock, error)) {
        return false;
    }
    const auto found = std::ranges::find(m_symbols, id, [](const auto& s) { return s->id; });
    if (found == m_symbols.end()) {
        return Fail(error, Tr("IDS_TERMINAL-QUOTES_NO_SYMBOL").arg(QString::fromStdString(id)));
    }
    const auto place = found - m_symbols.begin();
    std::unique_ptr<Symbol> removed = std::move(*found);
    m_symbols.erase(found);
    if (!WriteIndex(error)) {
        m_symbols.insert(m_symbols.begin() + place, std::move(removed));
        return false;
    }
    QFile::remove(BarsPath(id));
    return true;
}

std::shared_ptr<const BarSeries> UserMarket::Load(const Symbol& symbol, QString* error) const {
    return ReadBarFile(BarsPath(symbol.id), error);
}

}  // namespace ta::terminal
