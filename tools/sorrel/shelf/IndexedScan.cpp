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
    QVector<QByteArray> reports;
    const auto pass = [&](const QByteArray &report) {
        reports.append(report);
        const bool goesOn = reports.size() < ReportsAtOnce || take(reports);
        if (reports.size() >= ReportsAtOnce)
            reports.clear();
        return goesOn;
    };
    for (int i = 0; i < int(m_files.size()); ++i) {
        const QByteArray report = reportOf(m_files.at(i), reader, &status);
        if (report.isEmpty()) {
            status = qMax(status, readFrom(i, reader, pass));
            break;
        }
        if (!pass(report))
            return status;
    }
    if (!reports.isEmpty())
        take(reports);
    return status;
}

// Some reports are not in the index: it is full, a report is too large, or a path is no file. Workers make them again,
// and the others stay in order.
int IndexedScan::readFrom(int first, const SorrelKit::IndexReader &reader,
                          const std::function<bool(const QByteArray &report)> &pass) const
{
    int status = Success;
    QVector<FileName> missing;
    QVector<int> places;
    for (int i = first; i < int(m_files.size()); ++i) {
        if (!storedReport(m_files.at(i), reader).isStored()) {
            missing.append(m_files.at(i));
            places.append(i);
        }
    }
    int next = first;
    const auto passStored = [&](int end) {
        for (; next < end; ++next) {
            if (!pass(reportOf(m_files.at(next), reader, &status)))
                return false;
        }
        return true;
    };
    int done = 0;
    PackageScan scan(m_program, m_options, m_content);
    scan.setFiles(missing);
    const int scanned = scan.run(true, [&](const QVector<QByteArray> &reports) {
        for (const QByteArray &report : reports) {
            if (!passStored(places.at(done)) || !pass(report))
                return false;
            ++next;
            ++done;
        }
        return true;
    });
    if (done == int(places.size()))
        passStored(int(m_files.size()));
    return qMax(status, scanned);
}

IndexedScan::Stored IndexedScan::storedReport(const FileName &file, const SorrelKit::IndexReader &reader) const
{
    return {reader.report(keyOf(file.path(), false), WorkerCommand::order(m_content, m_options.limits()).content())};
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

// Empty when it is not stored.
QByteArray IndexedScan::reportOf(const FileName &file, const SorrelKit::IndexReader &reader, int *status) const
{
    const Stored stored = storedReport(file, reader);
    if (!stored.isStored())
        return {};
    const SorrelKit::IndexReader::Report &report = stored.report;
    if (report.errorCode != 0) {
        Console::complain(file.text(), report.errorText);
        *status = CannotRead;
    }
    if (report.json.isEmpty())
        return jsonText(PackageReport::failure(file, report.errorCode, report.errorText));
    if (file.path().startsWith('/'))
        return report.json;
    QJsonObject json = QJsonDocument::fromJson(report.json).object();
    json.remove(QStringLiteral("uri"));
    const QJsonObject name = file.toJson();
    for (auto member = name.begin(); member != name.end(); ++member)
        json.insert(member.key(), member.value());
    return jsonText(json);
}

bool IndexedScan::Stored::isStored() const
{
    return !report.json.isEmpty() || report.errorCode >= ScanError::TooMuchTime;
}
