#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

namespace ta::test {

/// A process of its own, telling by lines on its output.
class ChildProcess {
public:
    ChildProcess(const QString& program, const QStringList& arguments) {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(program, arguments);
    }
    ~ChildProcess() { Kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The next line that it prints; empty when it has ended.
    QByteArray Line() {
        while (!m_process.canReadLine() && m_process.waitForReadyRead(kPatience)) {
        }
        return m_process.readLine().trimmed();
    }
    bool EndsWell() {
        return m_process.waitForFinished(kPatience) &&
               m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    }
    /// SIGKILL.
    void Kill() {
        m_process.kill();
        m_process.waitForFinished(kPatience);
    }

private:
    static constexpr int kPatience = 60000;  // milliseconds

    QProcess m_process;
};

}  // namespace ta::test
