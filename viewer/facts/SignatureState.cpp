// SPDX-License-Identifier: LGPL-2.1-or-later
#include "facts/SignatureState.h"

#include "reading/SafeText.h"

#include <QJsonArray>

namespace Viewer {

namespace {

/// The most signers and errors that the window names.
constexpr int MaxNamed = 20;

/// The value of the first attribute CN of a distinguished name in the form of RFC 2253; @p name when it has none.
QString commonName(const QString &name)
{
    QString key;
    QString value;
    QString found;
    bool isValue = false;
    for (int i = 0; i <= name.size(); ++i) {
        const QChar character = i < name.size() ? name.at(i) : QLatin1Char(',');
        if (character == QLatin1Char('\\') && i + 1 < name.size()) {
            (isValue ? value : key) += name.at(++i);
        } else if (character == QLatin1Char(',') || (character == QLatin1Char('+') && isValue)) {
            if (found.isEmpty() && key.trimmed().compare(QLatin1String("CN"), Qt::CaseInsensitive) == 0)
                found = value.trimmed();
            key.clear();
            value.clear();
            isValue = false;
        } else if (character == QLatin1Char('=') && !isValue) {
            isValue = true;
        } else {
            (isValue ? value : key) += character;
        }
    }
    return found.isEmpty() ? name : found;
}

/// "ab12…" in groups of four digits, as people compare them.
QString grouped(const QString &digits)
{
    QString text;
    for (int i = 0; i < digits.size(); i += 4)
        text += (i > 0 ? QStringLiteral(" ") : QString()) + digits.mid(i, 4);
    return text;
}

} // namespace

SignatureState SignatureState::fromJson(const QJsonObject &content)
{
    SignatureState state;
    const QString error = content.value(QLatin1String("error")).toString();
    if (!error.isEmpty() || !content.value(QLatin1String("verified")).isBool()) {
        state.m_kind = Failed;
        state.m_reason = safePart(error);
        return state;
    }
    state.m_kind = content.value(QLatin1String("verified")).toBool() ? Verified : Refused;
    const QJsonArray signers = content.value(QLatin1String("signers")).toArray();
    for (int i = 0; i < qMin(MaxNamed, int(signers.size())); ++i) {
        const QJsonObject certificate = signers.at(i).toObject().value(QLatin1String("certificate")).toObject();
        const QString subject = certificate.value(QLatin1String("subject")).toString();
        const QString name = safePart(commonName(subject));
        if (!name.isEmpty() && !state.m_signers.contains(name))
            state.m_signers.append(name);
        const QString fingerprint = certificate.value(QLatin1String("sha256")).toString();
        const QString line = tr("Certificate of %1, SHA-256 %2").arg(safePart(subject), safePart(grouped(fingerprint)));
        if (!state.m_details.contains(line))
            state.m_details.append(line);
    }
    const QJsonArray errors = content.value(QLatin1String("errors")).toArray();
    for (int i = 0; i < qMin(MaxNamed, int(errors.size())); ++i) {
        const QString message = safePart(errors.at(i).toObject().value(QLatin1String("message")).toString());
        if (state.m_reason.isEmpty())
            state.m_reason = message;
        state.m_details.append(message);
    }
    return state;
}

QString SignatureState::text() const
{
    const QString names = m_signers.join(tr(", ", "between names of signers"));
    switch (m_kind) {
    case Unknown:
        return tr("The signature is being read…");
    case Verified:
        return names.isEmpty() ? tr("Verified") : tr("Verified, signed by %1").arg(names);
    case Refused:
        return m_reason.isEmpty() ? tr("Not verified") : tr("Not verified: %1").arg(m_reason);
    case Failed:
        break;
    }
    return m_reason.isEmpty() ? tr("The signature could not be read")
                              : tr("The signature could not be read: %1").arg(m_reason);
}

} // namespace Viewer
