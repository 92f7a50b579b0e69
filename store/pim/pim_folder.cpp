#include "store/pim/pim_folder.h"

namespace orvello {
namespace {

// The block that GetProps answered, with all that it points to.
class PropertyBlock {
 public:
  explicit PropertyBlock(HANDLE heap) : heap_(heap) {}
  PropertyBlock(const PropertyBlock&) = delete;
  PropertyBlock& operator=(const PropertyBlock&) = delete;
  ~PropertyBlock() {
    if (first_) HeapFree(heap_, 0, first_);
  }
  PimProperty** out() { return &first_; }
  const PimProperty* first() const { return first_; }

 private:
  HANDLE heap_;
  PimProperty* first_ = nullptr;
};

}  // namespace

bool switch_on_notifications(const PimObject& folder) {
  const auto item = folder.as<PimItemTable>(kPimItemInterface);
  if (!item) return false;
  PimProperty property{};
  property.id = kPimFolderNotifications;
  property.value.ui4 = kPimAllNotifications;
  return SUCCEEDED(item->SetProps(0, 1, &property));
}

bool read_folder_labels(const PimObject& folder, std::optional<Text>& labels) {
  labels.reset();
  const auto item = folder.as<PimItemTable>(kPimItemInterface);
  if (!item) return folder.last_result() == E_NOINTERFACE;
  const HANDLE heap = GetProcessHeap();
  PropertyBlock block(heap);
  ULONG bytes = 0;
  const PimPropertyId wanted = kPimFolderCategories;
  if (FAILED(item->GetProps(&wanted, kPimAllocate, 1, block.out(), &bytes, heap))) return false;
  labels.emplace();
  const PimProperty* told = block.first();
  if (told && told->id == wanted && (told->flags & kPimNotFound) == 0 && told->value.text)
    *labels = reinterpret_cast<const char16_t*>(told->value.text);
  return true;
}

}  // namespace orvello
