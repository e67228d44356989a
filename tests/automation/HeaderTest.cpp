#include "Client.h"

namespace zel {
namespace {

using GetText = HRESULT (STDMETHODCALLTYPE IZEL_Header::*)(BSTR*);
using PutText = HRESULT (STDMETHODCALLTYPE IZEL_Header::*)(BSTR);

struct TextCase {
    const char* name;
    GetText get;
    PutText put;
    std::size_t limit;
    const wchar_t* initially;
};
#define TEXT_CASE(name, limit, initially) \
    { #name, &IZEL_Header::get_##name, &IZEL_Header::put_##name, limit, initially }
const TextCase kTexts[] = {
    TEXT_CASE(CreatedBy, 9, L""),
    TEXT_CASE(CreatedByVersion, 19, L""),
    TEXT_CASE(LastModifiedBy, 9, L""),
    TEXT_CASE(ModifiedByVersion, 19, L""),
    TEXT_CASE(ProgramVersionSignature, 9, L""),
    TEXT_CASE(Signature, 9, L"TRN4WIN"),
};

TEST(Header, TextsAreCutSilently) {
    const std::wstring longText = L"0123456789abcdefghijklmnopq";
    for (const TextCase& c : kTexts) {
        const HeaderPtr header = Server::NewHeader();
        EXPECT_EQ(c.initially, Get(header.GetInterfacePtr(), c.get)) << c.name;
        for (const std::size_t length :
             {c.limit - 1, c.limit, c.limit + 1, longText.size(), std::size_t{0}}) {
            EXPECT_EQ(S_OK, (header->*c.put)(Text(longText.substr(0, length).c_str())));
            HRESULT result = -1;
            EXPECT_EQ(longText.substr(0, std::min(length, c.limit)),
                      Get(header.GetInterfacePtr(), c.get, &result))
                << c.name;
            EXPECT_EQ(S_OK, result) << c.name;
        }
        EXPECT_EQ(S_OK, (header->*c.put)(Text(L"\x00fc\x20ac")));
        EXPECT_EQ(L"\x00fc\x20ac", Get(header.GetInterfacePtr(), c.get)) << c.name;
        EXPECT_EQ(S_OK, (header->*c.put)(nullptr));
        EXPECT_EQ(L"", Get(header.GetInterfacePtr(), c.get)) << c.name;
        EXPECT_EQ(S_FALSE, (header->*c.get)(nullptr)) << c.name;
    }
}

// Puts a value into a new header and reads it back; the initial value first.
template <class Value>
void CheckNumber(const char* name, HRESULT (STDMETHODCALLTYPE IZEL_Header::*get)(Value*),
                 HRESULT (STDMETHODCALLTYPE IZEL_Header::*put)(Value), Value initially, Value value) {
    const HeaderPtr header = Server::NewHeader();
    EXPECT_EQ(initially, Get(header.GetInterfacePtr(), get)) << name;
    EXPECT_EQ(S_OK, (header->*put)(value)) << name;
    EXPECT_EQ(value, Get(header.GetInterfacePtr(), get)) << name;
    EXPECT_EQ(S_FALSE, (header->*get)(nullptr)) << name;
}
#define CHECK_NUMBER(name, initially, value)                                           \
    CheckNumber<std::remove_const_t<decltype(value)>>(#name, &IZEL_Header::get_##name, \
                                                      &IZEL_Header::put_##name, initially, value)

TEST(Header, NumbersAreStoredAsTheyCome) {
    const unsigned char byte = 200;
    const LONG number = -2000000001;
    CHECK_NUMBER(TarnVersion, 64, byte);
    CHECK_NUMBER(FileVersion, 0, byte);
    CHECK_NUMBER(Type, 0, byte);
    CHECK_NUMBER(Flags, 272, number);
    CHECK_NUMBER(CreationDate, 0, number);
    CHECK_NUMBER(CreationTime, 0, number);
    CHECK_NUMBER(ModifiedDate, 0, number);
    CHECK_NUMBER(ModifiedTime, 0, number);
}

}  // namespace
}  // namespace zel
