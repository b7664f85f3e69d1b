#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <random>

/// Does to a text what a careless hand or a broken disk does: the same to the same text for the same seed.
class TextMutator
{
public:
    /// The words, in the text's own language, are put in here and there.
    TextMutator(quint32 seed, const QByteArrayList& words) : _random(seed), _words(words) {}

    QByteArray Mutated(QByteArray text)
    {
        const int changes = 1 + Below(3);
        for (int i = 0; i < changes; ++i) {
            Change(text);
        }
        return text;
    }

private:
    int Below(int limit) { return static_cast<int>(_random() % static_cast<quint32>(limit)); }

    void Change(QByteArray& text)
    {
        const int at = Below(text.size() + 1);
        switch (Below(9)) {
        case 0:
            text.truncate(at);
            break;
        case 1:
            text.insert(at, static_cast<char>(Below(256)));
            break;
        case 2:
            text.remove(at, 1 + Below(8));
            break;
        case 3:
            text.insert(at, text.mid(Below(text.size() + 1), Below(60)));
            break;
        case 4:
            text.replace(at, 1, QByteArray(1, static_cast<char>(Below(256))));
            break;
        case 5:
        case 6:
            ChangeNumber(text, at);
            break;
        default:
            text.insert(at, _words.at(Below(_words.size())));
            break;
        }
    }

    /// The next digit, if any, becomes another one: what is read stays a number.
    void ChangeNumber(QByteArray& text, int at)
    {
        while (at < text.size() && (text.at(at) < '0' || text.at(at) > '9')) {
            ++at;
        }
        text.replace(at, 1, QByteArray::number(Below(10)));
    }

    std::mt19937 _random;
    QByteArrayList _words;
};
