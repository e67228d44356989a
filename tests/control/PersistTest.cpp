#include "ControlTest.h"

#include "Container.h"

namespace zel {
namespace {

class PersistTest : public ControlTest {
protected:
    static ComPtr<IStorage> NewStorage() {
        ComPtr<ILockBytes> bytes;
        ComPtr<IStorage> storage;
        CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.Out());
        StgCreateDocfileOnILockBytes(bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0,
                                     storage.Out());
        return storage;
    }
    static ComPtr<IStream> NewStream(const std::string& bytes = {}) {
        ComPtr<IStream> stream;
        CreateStreamOnHGlobal(nullptr, TRUE, stream.Out());
        stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
        Rewind(*stream);
        return stream;
    }
    static void Rewind(IStream& stream) { stream.Seek({}, STREAM_SEEK_SET, nullptr); }
    bool IsDirty() { return StoreAs<IPersistStreamInit>()->IsDirty() == S_OK; }
    // What OleLoad makes of a storage.
    SIZEL LoadedExtent(IStorage* storage, IOleClientSite* site = nullptr) {
        ComPtr<IOleObject> loaded;
        SIZEL extent = {};
        EXPECT_EQ(OleLoad(storage, IID_IOleObject, site, loaded.OutVoid()), S_OK);
        if (loaded) loaded->GetExtent(DVASPECT_CONTENT, &extent);
        if (loaded) loaded->Close(OLECLOSE_NOSAVE);
        return extent;
    }
};

TEST_F(PersistTest, AStreamKeepsTheExtent) {
    const auto persist = StoreAs<IPersistStreamInit>();
    EXPECT_FALSE(IsDirty());
    SetExtent(0x12345, 700);
    EXPECT_TRUE(IsDirty());
    auto stream = NewStream();
    EXPECT_EQ(persist->Save(stream.Get(), FALSE), S_OK);
    EXPECT_TRUE(IsDirty());
    Rewind(*stream);
    EXPECT_EQ(persist->Save(stream.Get(), TRUE), S_OK);
    EXPECT_FALSE(IsDirty());
    STATSTG state = {};
    ULARGE_INTEGER most = {};
    stream->Stat(&state, STATFLAG_NONAME);
    EXPECT_EQ(persist->GetSizeMax(&most), S_OK);
    EXPECT_EQ(most.QuadPart, state.cbSize.QuadPart);

    EXPECT_EQ(persist->InitNew(), S_OK);
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(Extent().cx, 5080);
    Rewind(*stream);
    EXPECT_EQ(persist->Load(stream.Get()), S_OK);
    EXPECT_EQ(Extent().cx, 0x12345);
    EXPECT_EQ(Extent().cy, 700);
    EXPECT_FALSE(IsDirty());
}

TEST_F(PersistTest, ADamagedStreamChangesNothing) {
    for (const std::string& bytes :
         {std::string(), std::string(7, '\1'), std::string("\1\0\0\0\0\0\0\x80", 8)}) {
        auto stream = NewStream(bytes);
        EXPECT_EQ(StoreAs<IPersistStreamInit>()->Load(stream.Get()), STG_E_DOCFILECORRUPT);
        EXPECT_EQ(Extent().cx, 5080);
    }
    EXPECT_TRUE(FAILED(StoreAs<IPersistStorage>()->Load(NewStorage().Get())));
}

TEST_F(PersistTest, OleSavesToAStorageAndLoadsFromIt) {
    Container container(Site::kPlain);
    const auto persist = StoreAs<IPersistStorage>();
    const auto storage = NewStorage();
    DWORD connection;
    store_->Advise(container.Sink(), &connection);
    SetExtent(1234, 567);
    ASSERT_EQ(OleSave(persist.Get(), storage.Get(), FALSE), S_OK);
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(persist->SaveCompleted(nullptr), S_OK);  // it was a copy
    EXPECT_TRUE(IsDirty());
    ASSERT_EQ(OleSave(persist.Get(), storage.Get(), TRUE), S_OK);
    EXPECT_EQ(persist->HandsOffStorage(), S_OK);
    EXPECT_EQ(persist->SaveCompleted(storage.Get()), S_OK);
    EXPECT_FALSE(IsDirty());
    EXPECT_EQ(container.TakeLog(), "OnSave OnSave");
    store_->Close(OLECLOSE_NOSAVE);

    const SIZEL loaded = LoadedExtent(storage.Get(), container.Client());
    EXPECT_EQ(loaded.cx, 1234);
    EXPECT_EQ(loaded.cy, 567);
    EXPECT_EQ(container.References(), 0);
}

TEST_F(PersistTest, OleCreatesInARealStorageFile) {
    constexpr wchar_t kFile[] = L"control_test.stg";
    Container container(Site::kPlain);
    for (const DWORD rendering : {OLERENDER_NONE, OLERENDER_DRAW}) {
        ComPtr<IStorage> storage;
        ASSERT_EQ(
            StgCreateDocfile(kFile, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, storage.Out()),
            S_OK);
        ComPtr<IOleObject> made;
        ASSERT_EQ(OleCreate(CLSID_BRU_Store, IID_IOleObject, rendering, nullptr, container.Client(),
                            storage.Get(), made.OutVoid()),
                  S_OK)
            << rendering;
        SIZEL extent = {222, 333};
        EXPECT_EQ(made->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
        EXPECT_EQ(OleSave(made.As<IPersistStorage>().Get(), storage.Get(), TRUE), S_OK);
        EXPECT_EQ(made->Close(OLECLOSE_NOSAVE), S_OK);
        made.Reset();
        storage.Reset();
        EXPECT_EQ(container.References(), 0);

        ASSERT_EQ(StgOpenStorage(kFile, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, nullptr, 0, storage.Out()),
                  S_OK);
        EXPECT_EQ(LoadedExtent(storage.Get()).cy, 333);
    }
    DeleteFileW(kFile);
}

}  // namespace
}  // namespace zel
