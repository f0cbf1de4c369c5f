#include "output/QrCode.h"

#include <qrencode.h>

#include <algorithm>
#include <memory>

namespace koben {

namespace {

constexpr int Border = 4;  // modules

}  // namespace

QrCode qrCode(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    if (bytes.isEmpty() || bytes.contains('\0')) return {};
    const std::unique_ptr<QRcode, void (*)(QRcode*)> made(
        QRcode_encodeString(bytes.constData(), 0, QR_ECLEVEL_M, QR_MODE_8, 1), QRcode_free);
    if (!made) return {};
    QrCode code{.size = made->width, .modules = {}};
    const auto count = static_cast<size_t>(code.size * code.size);
    code.modules.resize(count);
    std::transform(made->data, made->data + count, code.modules.begin(), [](unsigned char m) { return m & 1; });
    return code;
}

std::vector<DrawItem> drawQrCode(const QrCode& code, const QRectF& box) {
    std::vector<DrawItem> items;
    const double module = std::min(box.width(), box.height()) / (code.size + 2 * Border);
    for (int row = 0; row < code.size; ++row)
        for (int column = 0; column < code.size; ++column) {
            if (!code.dark(row, column)) continue;
            const int first = column;
            while (column + 1 < code.size && code.dark(row, column + 1)) ++column;
            items.push_back(
                Rectangle{.box = QRectF(box.left() + module * (Border + first), box.top() + module * (Border + row),
                                        module * (column - first + 1), module),
                          .width = 0,
                          .shade = 0});
        }
    return items;
}

}  // namespace koben
