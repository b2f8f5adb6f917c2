#include "app/message_frames.h"

#include <gtest/gtest.h>

namespace {

using messages = std::vector<QByteArray>;

TEST(MessageFrames, HoweverTheBytesArrive)
{
    const messages sent = {"zentara a.rlt", "", QByteArray(CMessageFrames::kMaxMessage, 'x')};
    QByteArray stream;
    for (const QByteArray& message : sent) stream += CMessageFrames::Framed(message);
    for (const qsizetype piece : {stream.size(), qsizetype(1 << 16), qsizetype(4093)}) {
        CMessageFrames frames;
        messages got;
        for (qsizetype at = 0; at < stream.size(); at += piece) EXPECT_TRUE(frames.Feed(stream.mid(at, piece), got));
        EXPECT_EQ(got, sent) << piece;
    }
}

TEST(MessageFrames, TooLongIsForeignForGood)
{
    CMessageFrames frames;
    messages got;
    const QByteArray good = CMessageFrames::Framed("a");
    EXPECT_FALSE(frames.Feed(good + QByteArray::fromHex("01001000") + good, got)) << "one byte above 1 MiB";
    EXPECT_EQ(got, messages{"a"}) << "what came before counts";
    EXPECT_FALSE(frames.Feed(good, got));
    EXPECT_EQ(got.size(), 1U);
}

} // namespace
