#include "tools/common/quantiser.h"

#include "tools/common/colour_distance.h"

#include <set>

#include <QColor>
#include <gtest/gtest.h>

namespace {

QImage Gradient(int side)
{
    QImage image(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) image.setPixel(x, y, qRgb(x * 255 / side, y * 255 / side, (x + y) * 127 / side));
    }
    return image;
}

int GreatestError(const QImage& image, const CIndexImage& quantised)
{
    int greatest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto at = static_cast<std::size_t>(y) * static_cast<std::size_t>(quantised.width);
            const QRgb colour = quantised.palette[quantised.indices[at + static_cast<std::size_t>(x)]];
            const QRgb pixel = image.pixel(x, y);
            greatest = std::max({greatest, std::abs(qRed(colour) - qRed(pixel)),
                                 std::abs(qGreen(colour) - qGreen(pixel)), std::abs(qBlue(colour) - qBlue(pixel))});
        }
    }
    return greatest;
}

} // namespace

TEST(Quantiser, KeepsFewColoursExactlyAndManyClosely)
{
    QImage few(40, 30, QImage::Format_RGB32);
    few.fill(qRgb(1, 2, 3));
    few.setPixel(7, 9, qRgb(1, 2, 4));
    EXPECT_EQ(GreatestError(few, QuantiseImage(few)), 0);

    const QImage many = Gradient(200);
    const CIndexImage quantised = QuantiseImage(many);
    EXPECT_EQ(quantised.palette.size(), 128U);
    EXPECT_LT(GreatestError(many, quantised), 32);
    EXPECT_EQ(QuantiseImage(many, 5).palette.size(), 5U);
    for (const CIndexImage& picture : {QuantiseImage(few), quantised})
        EXPECT_EQ(NearestColour(picture.palette, 0xFFFFFF), 1U) << "what shows beside the chart";
}

TEST(Quantiser, KeepsIndicesOfAnIndexPicture)
{
    QImage image(16, 16, QImage::Format_Indexed8);
    // A double colour, and one that no pixel has: neither may move an index.
    image.setColorTable({qRgb(9, 9, 9), qRgb(200, 0, 0), qRgb(9, 9, 9), qRgb(0, 0, 0)});
    image.fill(2);
    image.setPixel(3, 3, 1);
    const CIndexImage kept = QuantiseImage(image);
    EXPECT_EQ(kept.palette.size(), 4U);
    EXPECT_EQ(kept.indices[0], 2);
    EXPECT_EQ(kept.indices[3 * 16 + 3], 1);

    QList<QRgb> grey;
    for (int i = 0; i < 256; ++i) grey.append(qRgb(i, i, i));
    image.setColorTable(grey);
    image.setPixel(0, 0, 200); // above what a chart can index
    const CIndexImage mapped = QuantiseImage(image);
    EXPECT_EQ(GreatestError(image, mapped), 0);
}

TEST(Quantiser, LaysTransparencyOverWhite)
{
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    const CIndexImage quantised = QuantiseImage(image);
    EXPECT_EQ(quantised.palette.at(quantised.indices[0]), 0xFFFFFFU);
}
