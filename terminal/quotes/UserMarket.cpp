#include "terminal/quotes/UserMarket.h"

#include "platform/Text.h"
#include "platform/ui/TextBridge.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/BarPeriods.h"
#include "terminal/quotes/EarlierMarket.h"
#include "terminal/quotes/UserMarketFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>

#include <sqlite3.h>

namespace ta::terminal {
namespace {

constexpr int kLockWaitMs = 5000;
constexpr std::size_t kLongestId = 20;

bool Fail(QString* error, const QString& reason) {
    if (error != nullptr) {
        *error = reason;
    }
    return false;
}

QString ReasonFor(const SQLite::Exception& error) {
    switch (error.getErrorCode() & 0xff) {
        case SQLITE_SCHEMA:
            return Tr("IDS_TERMINAL-QUOTES_USER_MARKET_NEWER");
        case SQLITE_BUSY:
            return Tr("IDS_TERMINAL-QUOTES_USER_MARKET_IN_USE");
        default:
            return IsDamage(error.getErrorCode()) ? Tr("IDS_TERMINAL-QUOTES_USER_BARS_DAMAGED")
                                                  : QString::fromUtf8(error.what());
    }
}

/// Runs `operation`; SQLite's code of what it threw, and the reason in the language in use.
template <typename Operation>
int Try(const Operation& operation, QString* reason) {
    try {
        operation();
    } catch (const SQLite::Exception& error) {
        *reason = ReasonFor(error);
        return error.getErrorCode();
    }
    reason->clear();
    return SQLITE_OK;
}

const PriceKind& KindOf(const BarSeries& bars) {
    const auto hasTimeOfDay = [](const Bar& bar) { return SecondsOfDay(bar.time) != 0; };
    const auto hasSeconds = [](const Bar& bar) { return SecondsOfDay(bar.time) % 60 != 0; };
    if (std::ranges::any_of(bars, hasTimeOfDay)) {
        return std::ranges::any_of(bars, hasSeconds) ? kTickPrices : kMinutePrices;
    }
    const bool monthly = bars.size() > 1 && MonthlyBars(bars).size() == bars.size();
    return monthly ? kMonthlyPrices : kDailyPrices;
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

CString UniqueId(const QString& fileName, const std::vector<Symbol>& symbols) {
    const CString base = IdFromFileName(fileName);
    CString id = base;
    for (int i = 2; std::ranges::find(symbols, id, &Symbol::id) != symbols.end(); ++i) {
        id = base + '-' + std::to_string(i);
    }
    return id;
}

}  // namespace

QString DefaultUserFolder() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath("my-files");
}

UserMarket::UserMarket(const QString& folder) : m_folder(folder) {
    TakeOverEarlier();
    const QStringList told = m_problems;
    Reload();
    m_problems = told + m_problems;
}

Market UserMarket::Description() {
    return {kUserMarket, text::FromUtf8("我的檔案"), "My files"};
}

QString UserMarket::Path() const {
    return QDir(m_folder).filePath("market.db");
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

void UserMarket::TakeOverEarlier() {
    const QString index = EarlierIndex(m_folder);
    if (!QFile::exists(index)) {
        return;
    }
    const auto earlier = ReadEarlierMarket(m_folder, &m_problems);
    if (!earlier) {
        return;
    }
    const QString fault = Write([&](UserMarketFile& file) {
        const std::vector<Symbol> known = file.Symbols();
        for (const UserSymbol& own : *earlier) {
            if (std::ranges::find(known, own.symbol.id, &Symbol::id) == known.end()) {
                file.Add(own.symbol, own.bars);
            }
        }
    });
    if (fault.isEmpty()) {
        MoveAside(index, "imported");
    } else {
        m_problems.append(fault);
    }
}

void UserMarket::Reload() {
    m_problems.clear();
    std::vector<Symbol> symbols;
    QString reason;
    const auto read = [&] {
        if (QFile::exists(Path())) {
            symbols = UserMarketFile(Path()).Symbols();
        }
    };
    const int code = Try(read, &reason);
    if (code == SQLITE_OK) {
        Take(symbols);
        return;
    }
    if (IsDamage(code)) {
        reason = Tr("IDS_TERMINAL-QUOTES_USER_MARKET_DAMAGED");
    }
    m_problems.append(Tr("IDS_TERMINAL-QUOTES_FILE_UNREADABLE").arg(Path(), reason));
}

// A symbol that is still there stays the same object.
void UserMarket::Take(const std::vector<Symbol>& symbols) {
    std::vector<std::unique_ptr<Symbol>> before;
    before.swap(m_symbols);
    for (const Symbol& symbol : symbols) {
        const auto isSame = [&symbol](const auto& old) { return old && old->id == symbol.id; };
        const auto old = std::ranges::find_if(before, isSame);
        if (old == before.end()) {
            m_symbols.push_back(std::make_unique<Symbol>(symbol));
        } else {
            **old = symbol;
            m_symbols.push_back(std::move(*old));
        }
    }
}

int UserMarket::TryToWrite(const Change& change, QString* reason) {
    std::vector<Symbol> symbols;
    const auto write = [&] {
        UserMarketFile file(Path());
        file.Change([&] {
            change(file);
            symbols = file.Symbols();
        });
    };
    const int code = Try(write, reason);
    if (code == SQLITE_OK) {
        Take(symbols);
    }
    return code;
}

QString UserMarket::Write(const Change& change) {
    if (!QDir().mkpath(m_folder)) {
        return Tr("IDS_TERMINAL-QUOTES_USER_NO_FOLDER").arg(m_folder);
    }
    QString reason;
    int code = TryToWrite(change, &reason);
    if (IsDamage(code)) {
        // Of several programs that find the file damaged, one replaces it.
        QLockFile lock(Path() + ".lock");
        lock.tryLock(kLockWaitMs);
        code = TryToWrite(change, &reason);
        if (IsDamage(code)) {
            ReplaceDamaged();
            TryToWrite(change, &reason);
        }
    }
    return reason.isEmpty() ? QString()
                            : Tr("IDS_TERMINAL-QUOTES_FILE_UNWRITABLE").arg(Path(), reason);
}

void UserMarket::ReplaceDamaged() {
    std::vector<UserSymbol> readable;
    for (const auto& symbol : m_symbols) {
        if (const auto bars = Load(*symbol, nullptr)) {
            readable.push_back({*symbol, *bars});
        }
    }
    if (MoveAside(Path(), "damaged").isEmpty()) {
        return;
    }
    QString reason;
    const auto addAll = [&](UserMarketFile& file) {
        for (const UserSymbol& own : readable) {
            file.Add(own.symbol, own.bars);
        }
    };
    TryToWrite(addAll, &reason);
}

const Symbol* UserMarket::Add(const QString& fileName, const BarSeries& bars, double priceStep,
                              QString* error) {
    if (bars.empty()) {
        Fail(error, Tr("IDS_TERMINAL-QUOTES_CSV_NO_ROWS"));
        return nullptr;
    }
    Symbol symbol;
    symbol.chineseName = ui::FromQString(QFileInfo(fileName).completeBaseName());
    symbol.priceStep = priceStep;
    symbol.*KindOf(bars).has = true;
    const QString fault = Write([&](UserMarketFile& file) {
        symbol.id = UniqueId(fileName, file.Symbols());
        file.Add(symbol, bars);
    });
    if (!fault.isEmpty()) {
        Fail(error, fault);
        return nullptr;
    }
    return Find(symbol.id);
}

bool UserMarket::Remove(const CString& id, QString* error) {
    const CString wanted = id;  // may be the symbol's own, which goes
    bool removed = false;
    const QString fault = Write([&](UserMarketFile& file) { removed = file.Remove(wanted); });
    if (!fault.isEmpty()) {
        return Fail(error, fault);
    }
    return removed ||
           Fail(error, Tr("IDS_TERMINAL-QUOTES_NO_SYMBOL").arg(QString::fromStdString(wanted)));
}

std::shared_ptr<const BarSeries> UserMarket::Load(const Symbol& symbol, QString* error) const {
    auto bars = std::make_shared<BarSeries>();
    QString reason;
    if (Try([&] { *bars = UserMarketFile(Path()).Bars(symbol.id); }, &reason) != SQLITE_OK) {
        Fail(error, Tr("IDS_TERMINAL-QUOTES_FILE_UNREADABLE").arg(Path(), reason));
        return nullptr;
    }
    if (bars->empty()) {
        Fail(error, Tr("IDS_TERMINAL-QUOTES_NO_SYMBOL").arg(QString::fromStdString(symbol.id)));
        return nullptr;
    }
    return bars;
}

}  // namespace ta::terminal
