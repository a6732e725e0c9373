// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/papers/completions.h"

#include "editor/settingslayout.h"

#include <algorithm>

namespace {

using papers::Offer;

QStringList fieldNames(const QString& end)
{
    QStringList names;
    for (const cMySettingsField& field : editor::settingsFields()) {
        names.append(field.name + end);
    }
    return names;
}

QVector<Offer> buildOffers()
{
    return {
        {Completion::None, "nothing", {}, false, {}},
        {Completion::SettingsFile, "settings_file", {}, true, {".mio"}},
        {Completion::ImageSource, "image_source", {"device", "default"}, true, {".mio"}},
        {Completion::LibraryFile, "library_file", {}, true, {".mia", ".mic"}},
        {Completion::Profile,
         "profile",
         {"freedive", "square", "sawtooth"},
         true,
         {".csv", ".ssrf", ".xml", ".uddf"}},
        {Completion::Picture, "picture", {}, true, {".svg", ".png"}},
        {Completion::File, "file", {}, true, {}},
        {Completion::Directory, "directory", {}, false, {}},
        {Completion::Port, "port", {}, false, {}},
        {Completion::Field, "field", fieldNames({}), false, {}},
        {Completion::Assignment, "assignment", fieldNames(QStringLiteral("=")), false, {}},
    };
}

} // namespace

namespace papers {

const QVector<Offer>& offers()
{
    static const QVector<Offer> all = buildOffers();
    return all;
}

const Offer& offerFor(Completion completion)
{
    return *std::find_if(offers().cbegin(), offers().cend(), [completion](const Offer& offer) {
        return offer.completion == completion;
    });
}

QStringList spellings(const cMyOption& option)
{
    QStringList typed{QStringLiteral("--") + QLatin1String(option.name)};
    if (option.letter != '\0') {
        typed.prepend(QStringLiteral("-") + QLatin1Char(option.letter));
    }
    return typed;
}

bool takesValue(const cMyOption& option)
{
    return *option.valueName != '\0';
}

} // namespace papers
