// Regular-expression replacement with a callback, which QString::replace
// lacks: each match is replaced by what `write(match, out)` appends.
#pragma once

#include <QRegularExpression>
#include <QString>

namespace fl {

template <class Write> void replaceEach(QString& s, const QRegularExpression& re, Write write) {
    QString out;
    out.reserve(s.size() + 8);
    qsizetype last = 0;
    for (auto it = re.globalMatch(s); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        out += QStringView(s).mid(last, m.capturedStart() - last);
        write(m, out);
        last = m.capturedEnd();
    }
    out += QStringView(s).mid(last);
    s = std::move(out);
}

}  // namespace fl
