#include "vfc/persist/vpGStreambuf.h"

#include <gtest/gtest.h>

#include <istream>
#include <ostream>
#include <string>

namespace {

// A buffer whose consumer takes at most `take` bytes per call (or a fixed answer) and whose
// producer hands out `input` in pieces of at most `give` bytes.
class Probe : public vpGStreambuf {
  public:
    explicit Probe(int size) : vpGStreambuf(size) {}
    ~Probe() override { sync(); }

    std::string taken;
    int calls = 0;
    int take = 1 << 30;
    int answer = -1;  // when >= 0, consumer returns this and takes nothing
    std::string input;
    int give = 1 << 30;

    using vpGStreambuf::overflow;
    using vpGStreambuf::sync;

  private:
    int consumer(char* data, int n) override {
        ++calls;
        if (answer >= 0) return answer;
        int k = std::min(n, take);
        taken.append(data, static_cast<size_t>(k));
        return k;
    }
    int producer(char* data, int n) override {
        int k = std::min({n, give, static_cast<int>(input.size())});
        input.copy(data, static_cast<size_t>(k));
        input.erase(0, static_cast<size_t>(k));
        return k;
    }
};

TEST(vpGStreambuf, HandsOutputToTheConsumerInBufferSizedPieces) {
    Probe buf(4);
    std::ostream out(&buf);
    EXPECT_EQ(buf.sync(), 0);
    EXPECT_EQ(buf.calls, 0);  // nothing written: the consumer is not asked
    out << "abcdefghij";
    EXPECT_EQ(buf.taken, "abcdefgh");
    EXPECT_EQ(buf.calls, 2);
    out.flush();
    EXPECT_EQ(buf.taken, "abcdefghij");
}

TEST(vpGStreambuf, ReportsAFailedFlushWith255) {
    Probe refuses(8);
    refuses.answer = 0;
    std::ostream out(&refuses);
    out << "xyz";
    EXPECT_EQ(refuses.sync(), 255);
    Probe greedy(8);
    greedy.answer = 9;  // claims more than it was given
    std::ostream out2(&greedy);
    out2 << "xyz";
    EXPECT_EQ(greedy.sync(), 255);
    // A consumer that never takes anything cannot make writing loop forever.
    out << std::string(100, 'q');
    EXPECT_TRUE(out.bad());
    refuses.answer = -1;
    greedy.answer = -1;
}

TEST(vpGStreambuf, PartialTakeMovesTheRestToTheFront) {
    Probe buf(8);
    buf.take = 3;
    std::ostream out(&buf);
    out << "abcde";
    EXPECT_EQ(buf.sync(), 0);
    EXPECT_EQ(buf.taken, "abc");
    // The untaken "de" now stands at the front, the room is 2 and the next writes go over it.
    out << "XY";
    EXPECT_EQ(buf.sync(), 0);
    EXPECT_EQ(buf.taken, "abcXY");
}

TEST(vpGStreambuf, ReadsFromTheProducerAndAnswers255AtTheEnd) {
    Probe buf(4);
    buf.input = "hello world";
    buf.give = 3;
    std::istream in(&buf);
    std::string got;
    for (int i = 0; i < 11; ++i)
        got += static_cast<char>(in.get());
    EXPECT_EQ(got, "hello world");
    EXPECT_EQ(in.get(), 255);  // no data: byte 255, not end-of-file
    EXPECT_EQ(in.get(), 255);
    EXPECT_TRUE(in.good());
    buf.input = "more";  // a producer that has data again is asked again
    EXPECT_EQ(in.get(), 'm');
}

TEST(vpGStreambuf, ReadingFlushesPendingOutputFirst) {
    Probe buf(16);
    std::ostream out(&buf);
    std::istream in(&buf);
    out << "pending";
    buf.input = "x";
    EXPECT_EQ(in.get(), 'x');
    EXPECT_EQ(buf.taken, "pending");
}

TEST(vpGStreambuf, PutsBackIntoTheGetBufferOnly) {
    Probe buf(8);
    buf.input = "ab";
    std::istream in(&buf);
    EXPECT_EQ(in.get(), 'a');
    in.putback('Z');
    EXPECT_EQ(in.get(), 'Z');
    EXPECT_EQ(in.get(), 'b');
    Probe fresh(8);
    EXPECT_EQ(fresh.sungetc(), 255);  // nothing read yet: nowhere to put a byte back
}

}  // namespace
