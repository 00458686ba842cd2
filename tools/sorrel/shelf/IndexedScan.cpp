// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IndexedScan.h"

#include "Command.h"
#include "Console.h"
#include "JsonText.h"
#include "OpenIndex.h"
#include "PackageReport.h"
#include "ProgressBar.h"
#include "WorkerCommand.h"

#include "shelf/index/IndexUpdate.h"
#include "workers/ScanError.h"

#include <QJsonDocument>

#include <cstdlib>
#include <memory>
#include <sys/stat.h>

namespace {

constexpr int ReportsAtOnce = 64;

// The key of a file in an index: its absolute path. Links to folders are followed, and a link to a file is kept.
QByteArray keyOf(const QByteArray &path, bool isFolder)
{
    const auto slash = path.lastIndexOf('/');
    const QByteArray folder = isFolder ? path : slash < 0 ? QByteArray(".") : path.left(slash + 1);
    char *const real = ::realpath(folder.constData(), nullptr);
    QByteArray key(real);
    std::free(real);
    if (key.isEmpty() || isFolder)
        return key;
    return (key.endsWith('/') ? key : key + '/') + path.mid(slash + 1);
}

bool isFolder(const QByteArray &path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

void IndexedScan::add(const QStringList &arguments)
{
    const auto before = m_files.size();
    PackageScan::add(arguments);
    for (const QString &argument : arguments) {
        const QByteArray path = FileName(argument).path();
        if (path != "-" && isFolder(path))
            m_folders.append(keyOf(path, true));
    }
    for (auto i = before; i < m_files.size(); ++i) {
        const QByteArray key = keyOf(m_files.at(i).path(), false);
        if (!key.isEmpty())
            m_packages.append(key);
    }
}

int IndexedScan::run(bool isOrdered, const Take &take) const
{
    SorrelKit::IndexFile file;
    if (!openIndex(m_index, false, &file) || !file.database().isWritable()) {
        PackageScan::run(isOrdered, take);
        return CannotRead;
    }
    int status = complainOfFaults();
    if (!update(file))
        status = CannotRead;
    const SorrelKit::IndexReader reader(file.database());
    const QByteArray content = WorkerCommand::order(m_content, m_options.limits()).content();
    QVector<QByteArray> reports;
    for (const FileName &each : m_files) {
        reports.append(reportOf(each, reader, content, &status));
        if (reports.size() < ReportsAtOnce)
            continue;
        if (!take(reports))
            return status;
        reports.clear();
    }
    if (!reports.isEmpty())
        take(reports);
    return status;
}

// A folder that was scanned is one of the index from now on.
bool IndexedScan::update(SorrelKit::IndexFile &file) const
{
    using namespace SorrelKit;
    QList<QByteArray> folders = IndexReader(file.database()).folders();
    for (const QByteArray &folder : m_folders) {
        if (!folders.contains(folder))
            folders.append(folder);
    }
    if (file.database().begin()) {
        IndexWriter(file.database()).setFolders(folders);
        file.database().commit();
    }
    IndexUpdate::Order order;
    order.folders = m_folders;
    order.files = m_packages;
    order.program.path = m_program;
    order.content = WorkerCommand::order(m_content, m_options.limits());
    order.keepsReports = true;
    order.jobs = m_options.jobs();
    std::unique_ptr<ProgressBar> progress;
    IndexUpdate update(file, {{}, [&](int done, int total) {
                                  if (progress == nullptr)
                                      progress = std::make_unique<ProgressBar>(total, m_options.showsProgress());
                                  progress->setDone(done);
                              }});
    const bool isDone = update.run(order);
    progress.reset();
    // Folders that cannot be read were found by add() as well.
    if (!isDone && update.error().code() != ShelfError::Code::NoFolder)
        Console::complain(QStringLiteral("index"), update.error().text());
    return isDone;
}

QByteArray IndexedScan::reportOf(const FileName &file, const SorrelKit::IndexReader &reader, const QByteArray &content,
                                 int *status) const
{
    const SorrelKit::IndexReader::Report stored = reader.report(keyOf(file.path(), false), content);
    if (stored.json.isEmpty() && stored.errorCode < ScanError::TooMuchTime) {
        // Its report is too large to be stored, or it is no file.
        QByteArray read;
        PackageScan scan(m_program, m_options, m_content);
        scan.add({argumentText(file.path())});
        if (scan.run(true,
                     [&](const QVector<QByteArray> &reports) {
                         read = reports.constFirst();
                         return true;
                     })
            != Success)
            *status = CannotRead;
        return read;
    }
    if (stored.errorCode != 0) {
        Console::complain(file.text(), stored.errorText);
        *status = CannotRead;
    }
    if (stored.json.isEmpty())
        return jsonText(PackageReport::failure(file, stored.errorCode, stored.errorText));
    if (file.path().startsWith('/'))
        return stored.json;
    QJsonObject report = QJsonDocument::fromJson(stored.json).object();
    report.remove(QStringLiteral("uri"));
    const QJsonObject name = file.toJson();
    for (auto member = name.begin(); member != name.end(); ++member)
        report.insert(member.key(), member.value());
    return jsonText(report);
}
