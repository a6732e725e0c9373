// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/session.h"

namespace support {

bool Session::obeyed(const QString& request, const QString& name)
{
    return ask(request, name).has_value();
}

std::optional<bool> Session::flag(const QString& request, const QString& name)
{
    const auto value = ask(request, name);
    return value ? std::make_optional(value->toBool()) : std::nullopt;
}

QString Session::text(const QString& name)
{
    return ask(QStringLiteral("text"), name).value_or(QJsonValue()).toString();
}

std::optional<bool> Session::isEnabled(const QString& name)
{
    return flag(QStringLiteral("enabled"), name);
}

std::optional<bool> Session::isVisible(const QString& name)
{
    return flag(QStringLiteral("visible"), name);
}

QStringList Session::items(const QString& name)
{
    QStringList texts;
    const QJsonArray all = ask(QStringLiteral("items"), name).value_or(QJsonValue()).toArray();
    for (const QJsonValue& each : all) {
        texts += each.toString();
    }
    return texts;
}

int Session::index(const QString& name)
{
    return ask(QStringLiteral("index"), name).value_or(QJsonValue()).toInt(-1);
}

QString Session::title()
{
    return ask(QStringLiteral("title")).value_or(QJsonValue()).toString();
}

QString Session::statusMessage()
{
    return ask(QStringLiteral("statusMessage")).value_or(QJsonValue()).toString();
}

bool Session::trigger(const QString& name)
{
    return obeyed(QStringLiteral("trigger"), name);
}

bool Session::click(const QString& name)
{
    return obeyed(QStringLiteral("click"), name);
}

bool Session::choose(const QString& name, int index)
{
    return ask({{QStringLiteral("request"), QStringLiteral("choose")},
                {QStringLiteral("name"), name},
                {QStringLiteral("index"), index}})
        .has_value();
}

bool Session::chooseText(const QString& name, const QString& itemText)
{
    return choose(name, static_cast<int>(items(name).indexOf(itemText)));
}

bool Session::type(const QString& name, const QString& text)
{
    return ask({{QStringLiteral("request"), QStringLiteral("type")},
                {QStringLiteral("name"), name},
                {QStringLiteral("text"), text}})
        .has_value();
}

bool Session::setValue(const QString& name, double value)
{
    return ask({{QStringLiteral("request"), QStringLiteral("setValue")},
                {QStringLiteral("name"), name},
                {QStringLiteral("value"), value}})
        .has_value();
}

bool Session::press(const QString& key, const QString& name)
{
    QJsonObject request{{QStringLiteral("request"), QStringLiteral("key")},
                        {QStringLiteral("key"), key}};
    if (!name.isEmpty()) {
        request.insert(QStringLiteral("name"), name);
    }
    return ask(request).has_value();
}

bool Session::page(int index)
{
    return ask({{QStringLiteral("request"), QStringLiteral("page")},
                {QStringLiteral("index"), index}})
        .has_value();
}

bool Session::answer(const QString& button)
{
    return ask({{QStringLiteral("request"), QStringLiteral("answer")},
                {QStringLiteral("button"), button}})
        .has_value();
}

bool Session::cancel()
{
    return obeyed(QStringLiteral("cancel"));
}

bool Session::chooseFile(const QString& file)
{
    return ask({{QStringLiteral("request"), QStringLiteral("chooseFile")},
                {QStringLiteral("path"), file}})
        .has_value();
}

bool Session::close()
{
    return obeyed(QStringLiteral("close"));
}

QJsonObject Session::dialog()
{
    return ask(QStringLiteral("dialog")).value_or(QJsonValue()).toObject();
}

QJsonArray Session::takeDialogs()
{
    return ask(QStringLiteral("dialogs")).value_or(QJsonValue()).toArray();
}

bool Session::grab(const QString& file)
{
    return ask({{QStringLiteral("request"), QStringLiteral("grab")},
                {QStringLiteral("file"), file}})
        .has_value();
}

int Session::takeLongestGap()
{
    return ask(QStringLiteral("longestGap")).value_or(QJsonValue()).toInt(-1);
}

bool Session::waitForDialog(const QString& title, int milliseconds)
{
    return waitFor(
        [this, &title] { return dialog().value(QLatin1String("title")).toString() == title; },
        milliseconds);
}

bool Session::waitForNoDialog(int milliseconds)
{
    return waitFor([this] { return dialog().isEmpty() && m_error.isEmpty(); }, milliseconds);
}

} // namespace support
