#include "terminal/quotes/CsvImportJob.h"

#include <QThread>

namespace ta::terminal {

CsvImportJob::CsvImportJob(const QString& path, QObject* parent) : QObject(parent), m_path(path) {}

CsvImportJob::~CsvImportJob() {
    m_cancel = true;
    if (m_thread) {
        m_thread->wait();
    }
}

void CsvImportJob::Start() {
    if (m_thread) {
        return;
    }
    m_thread.reset(QThread::create([this] {
        int told = -1;
        m_result = ImportCsvFile(m_path, [this, &told](double done) {
            const int permille = static_cast<int>(done * 1000);
            if (permille > told) {
                told = permille;
                emit progressed(permille);
            }
            return !m_cancel;
        });
    }));
    connect(m_thread.get(), &QThread::finished, this, [this] {
        if (m_cancel) {
            m_result = {};
            m_result.cancelled = true;
        }
        emit finished();
    });
    m_thread->start();
}

}  // namespace ta::terminal
