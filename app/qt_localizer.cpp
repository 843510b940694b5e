#include "app/qt_localizer.hpp"

#include <QCoreApplication>

namespace zelvaine {

std::string QtLocalizer::translate(std::string_view context, std::string_view key) const
{
    const std::string contextText(context);
    const std::string keyText(key);
    return QCoreApplication::translate(contextText.c_str(), keyText.c_str()).toStdString();
}

} // namespace zelvaine
