#include "app/qt_localizer.hpp"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

namespace zelvaine {

std::string QtLocalizer::translate(std::string_view context, std::string_view key) const
{
    const std::string contextText(context);
    const std::string keyText(key);
    return QCoreApplication::translate(contextText.c_str(), keyText.c_str()).toStdString();
}

std::string QtLocalizer::translate(std::string_view context, std::string_view key, std::int64_t count) const
{
    const std::string contextText(context);
    const std::string keyText(key);
    // Qt picks the plural form from an int; counts beyond it take the form of the largest.
    const auto n = static_cast<int>(
        std::clamp<std::int64_t>(count, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
    const QString text = QCoreApplication::translate(contextText.c_str(), keyText.c_str(), nullptr, n);
    return formatCount(text.toStdString(), count);
}

} // namespace zelvaine
