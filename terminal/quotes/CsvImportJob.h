#pragma once

#include "terminal/quotes/CsvImport.h"

#include <QObject>

#include <atomic>
#include <memory>

class QThread;

namespace ta::terminal {

/// Reads a price file in a thread of its own. One object reads one file. Destroying it cancels and
/// waits.
class CsvImportJob : public QObject {
    Q_OBJECT

public:
    explicit CsvImportJob(const QString& path, QObject* parent = nullptr);
    ~CsvImportJob() override;

    void Start();
    /// finished() follows soon, with a cancelled result.
    void Cancel() { m_cancel = true; }

    /// What was read; for after finished(). May be moved from.
    CsvImportResult& Result() { return m_result; }

signals:
    /// 0 to 1000, rising.
    void progressed(int permille);
    void finished();

private:
    QString m_path;
    std::atomic<bool> m_cancel = false;
    CsvImportResult m_result;
    std::unique_ptr<QThread> m_thread;
};

}  // namespace ta::terminal
