#include <cstdio>

#include <QFile>

#include "unit/machine/documenttables.h"

/// Writes the machine's tables into the page that is named as the only argument.
int main(int count, char** arguments)
{
    QFile file(QFile::decodeName(count == 2 ? arguments[1] : ""));
    if (!file.open(QIODevice::ReadWrite)) {
        std::fprintf(stderr, "There is no page that can be written.\n");
        return 1;
    }
    const QByteArray page = DocumentTables::UpToDate(QString::fromUtf8(file.readAll())).toUtf8();
    if (page.isEmpty()) {
        std::fprintf(stderr, "The page has no marks for the tables.\n");
        return 1;
    }
    file.resize(0);
    file.seek(0);
    return file.write(page) == page.size() ? 0 : 1;
}
