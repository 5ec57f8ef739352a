// CCmdTarget: the platform class library's base of objects that scripts drive by late-bound
// calls. Once a derived class calls EnableAutomation, the target hands out an IDispatch part
// through which script engines find its methods by name (letter case ignored) and call them by
// DISPID, as its dispatch map lists them; its interface map says which interface ids the target
// answers to.
//
// The target counts references from 1, the reference of whoever made it. When the count drops to
// 0, OnFinalRelease runs, which deletes the target: an owner that embeds a target keeps its own
// reference for the target's whole life. The target's owner destroys it in every other case.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "host/platform/automation.h"
#include "host/platform/runtime_class.h"

class CCmdTarget;

// One method of a dispatch map. Every parameter is a VARIANT, passed by const reference, and so
// is the result, which the caller then owns.
struct DispatchMethod {
  const wchar_t* m_name;
  DISPID m_dispid;
  UINT m_parameter_count;
  // Calls the method on `target` with `m_parameter_count` arguments, first argument first.
  VARIANT (*m_call)(CCmdTarget& target, const VARIANT* const* arguments);
};

// A class's dispatch map: its own methods, searched before its base's.
struct DispatchMap {
  const DispatchMap* m_base;
  const DispatchMethod* m_methods;
  std::size_t m_count;
};

// One entry of an interface map: the interface id, and the part of the target that answers it
// (null when the target has none at present). The target keeps ownership of its parts.
struct InterfaceMapEntry {
  const IID* m_iid;
  IUnknown* (*m_part)(CCmdTarget& target);
};

// A class's interface map: its own entries, searched before its base's.
struct InterfaceMap {
  const InterfaceMap* m_base;
  const InterfaceMapEntry* m_entries;
  std::size_t m_count;
};

class CCmdTarget : public CObject {
 public:
  static const CRuntimeClass kRuntimeClass;
  // No methods of its own.
  static const DispatchMap kDispatchMap;
  // IUnknown and IDispatch, both answered by the dispatch part.
  static const InterfaceMap kInterfaceMap;

  CCmdTarget();
  ~CCmdTarget() override;
  CCmdTarget(const CCmdTarget&) = delete;
  CCmdTarget& operator=(const CCmdTarget&) = delete;

  const CRuntimeClass* GetRuntimeClass() const override;

  // Add or release a reference: the count afterwards. Releasing the last reference calls
  // OnFinalRelease; releasing at 0 does nothing.
  ULONG AddRef();
  ULONG Release();
  // Deletes the target.
  virtual void OnFinalRelease();

  // Gives the target its dispatch part; derived classes call it in their constructor.
  void EnableAutomation();
  // The target's interface of that id, from its interface maps, or null. No reference is added:
  // a caller that keeps the interface adds one.
  IUnknown* GetInterface(REFIID iid);
  // The dispatch part when automation is enabled, else null; for interface map entries.
  static IUnknown* DispatchPart(CCmdTarget& target);

  virtual const DispatchMap* GetDispatchMap() const;
  virtual const InterfaceMap* GetInterfaceMap() const;

 private:
  // The IDispatch part: its references are the target's.
  class XDispatch : public IDispatch {
   public:
    explicit XDispatch(CCmdTarget& owner) : m_owner(owner) {}
    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override { return m_owner.AddRef(); }
    ULONG Release() override { return m_owner.Release(); }
    HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                   VARIANT* result, EXCEPINFO* exception, UINT* argument_error) override;

   private:
    CCmdTarget& m_owner;
  };

  const DispatchMethod* FindMethod(const wchar_t* name) const;
  const DispatchMethod* FindMethod(DISPID dispid) const;

  ULONG m_reference_count = 1;
  bool m_automation_enabled = false;
  XDispatch m_dispatch;
};

namespace dispatch_detail {

template <auto Method, class Signature = decltype(Method)>
struct Call;

template <auto Method, class T, class... Args>
struct Call<Method, VARIANT (T::*)(Args...)> {
  static_assert(std::is_base_of_v<CCmdTarget, T>, "methods of command targets only");
  static_assert((std::is_same_v<Args, const VARIANT&> && ...),
                "every parameter is a const VARIANT&");
  static constexpr UINT kParameterCount = sizeof...(Args);

  static VARIANT Invoke(CCmdTarget& target, const VARIANT* const* arguments) {
    return Expand(static_cast<T&>(target), arguments, std::index_sequence_for<Args...>());
  }
  template <std::size_t... I>
  static VARIANT Expand(T& target, [[maybe_unused]] const VARIANT* const* arguments,
                        std::index_sequence<I...>) {
    return (target.*Method)(*arguments[I]...);
  }
};

}  // namespace dispatch_detail

// The dispatch map entry of `Method`, a public member function of a class derived from
// CCmdTarget that takes only `const VARIANT&` parameters and returns a VARIANT.
template <auto Method>
constexpr DispatchMethod DispatchMethodOf(const wchar_t* name, DISPID dispid) {
  using Call = dispatch_detail::Call<Method>;
  return {name, dispid, Call::kParameterCount, &Call::Invoke};
}
