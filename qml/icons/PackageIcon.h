// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_PACKAGEICON_H
#define SORRELQML_PACKAGEICON_H

#include "icons/IconResponse.h"

#include <QRunnable>

#include <memory>

namespace SorrelQml {

/// Draws the icon of a package for a job, from its file. Ends the job when it was never run, too.
class PackageIcon : public QRunnable
{
public:
    explicit PackageIcon(const std::shared_ptr<IconJob> &job) : m_job(job) {}
    ~PackageIcon() override;

    void run() override;

private:
    const std::shared_ptr<IconJob> m_job;
};

} // namespace SorrelQml

#endif
