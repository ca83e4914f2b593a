// SPDX-License-Identifier: MIT
#include "host/vxutils/writeWhole.h"

#include <QByteArray>
#include <QFileDevice>

bool writeWhole(QFileDevice &file, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    // The second one goes on where the first one stopped.
    return file.flush() || file.flush();
}
