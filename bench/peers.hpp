#pragma once

/// \file
/// The headers of this library and of all that it is compared with: the precompiled header of the
/// operations.

#include <tavi/ioapi/v2/ioapi.hpp>

#include <boost/json.hpp>
#include <boost/lexical_cast.hpp>
#include <boost/numeric/conversion/cast.hpp>
#include <fmt/compile.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <Poco/Dynamic/Struct.h>
#include <Poco/Dynamic/Var.h>
#include <Poco/JSON/Array.h>
#include <Poco/JSON/Object.h>
#include <Poco/JSON/Stringifier.h>
#include <Poco/Mutex.h>
#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QMutex>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <any>
#include <charconv>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// Qt gives these names to the preprocessor, and GLib to members.
#undef emit
#undef foreach
#undef signals
#undef slots
#include <glib-object.h>
