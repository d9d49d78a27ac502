// The value types of the foundation: strings, addresses, dates.
//
// One good library's types serve instead of home-made ones. Each has a null state that stands for
// nil: NSString().isNull(), NSURL().isEmpty(), NSDate().isNull().
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUrl>

using NSString = QString;
using NSURL = QUrl;
using NSDate = QDateTime;
using NSData = QByteArray;
using NSTimeInterval = double; // seconds

// How a boolean that picks animation reads at the place of the call.
enum class Animated : bool { No = false, Yes = true };
