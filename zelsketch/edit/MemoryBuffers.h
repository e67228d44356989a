#pragma once

#include <streambuf>
#include <string>
#include <string_view>

namespace zel {

// Stream buffers over bytes in memory that copy nothing, for files too large to be held more often than need
// be.

// To read bytes, which must outlive it.
class ViewBuffer : public std::streambuf {
public:
    explicit ViewBuffer(std::string_view bytes) {
        char* begin = const_cast<char*>(bytes.data());  // a get area is never written to
        setg(begin, begin, begin + bytes.size());
    }
};

// What is written goes to Put, piece by piece.
class PutBuffer : public std::streambuf {
protected:
    virtual void Put(std::string_view bytes) = 0;

private:
    std::streamsize xsputn(const char* bytes, std::streamsize size) override {
        Put({bytes, static_cast<std::size_t>(size)});
        return size;
    }
    int_type overflow(int_type byte) override {
        const char one = traits_type::to_char_type(byte);
        Put({&one, 1});
        return byte;
    }
};

// Appends to a string.
class AppendBuffer : public PutBuffer {
public:
    explicit AppendBuffer(std::string& bytes) : bytes_(bytes) {}

private:
    void Put(std::string_view bytes) override { bytes_ += bytes; }

    std::string& bytes_;
};

// Compares with bytes that are there.
class CompareBuffer : public PutBuffer {
public:
    explicit CompareBuffer(std::string_view bytes) : rest_(bytes) {}
    // Whether it was just those.
    bool IsSame() const { return isSame_ && rest_.empty(); }

private:
    void Put(std::string_view bytes) override {
        isSame_ = isSame_ && rest_.substr(0, bytes.size()) == bytes;
        if (isSame_) rest_.remove_prefix(bytes.size());
    }

    std::string_view rest_;
    bool isSame_ = true;
};

}  // namespace zel
