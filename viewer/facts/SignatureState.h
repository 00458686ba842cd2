// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SIGNATURESTATE_H
#define VIEWER_SIGNATURESTATE_H

#include <QCoreApplication>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace Viewer {

/// The result of verifying a package, in the words of the window. It is made of the topic `signature`, whose names come
/// from the signer: each is on one line and isolated (safePart()).
class SignatureState
{
    Q_DECLARE_TR_FUNCTIONS(Viewer::SignatureState)

public:
    enum Kind {
        Unknown,  ///< not read yet
        Verified, ///< signed, and unchanged since
        Refused,  ///< not signed, or changed since: Android would refuse the package
        Failed,   ///< the signature could not be read
    };

    SignatureState() = default;
    /// The state for the content of the topic `signature`. A content without `verified` or with `error` is Failed.
    static SignatureState fromJson(const QJsonObject &content);

    Kind kind() const { return m_kind; }
    /// The state on one line: "Verified, signed by Jane".
    QString text() const;
    /// The details behind it: the whole names and fingerprints of the signers, or all errors; one on a
    /// line.
    QStringList details() const { return m_details; }
    /// The names of the signers, without repetition: the common name, or the whole name when there is none.
    QStringList signers() const { return m_signers; }

private:
    Kind m_kind = Unknown;
    QString m_reason; ///< the first error
    QStringList m_details;
    QStringList m_signers;
};

} // namespace Viewer

#endif
