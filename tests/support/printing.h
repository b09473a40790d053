#pragma once

#include <QtCore/QString>

#include <ostream>

QT_BEGIN_NAMESPACE

/// Lets failures show texts as they read, in place of a list of code units.
inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

QT_END_NAMESPACE
