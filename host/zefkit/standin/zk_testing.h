// Test seams of the kernel stand-in: scope guards that make kernel calls fail (or a class unknown)
// on demand, so that tests can reach the failure paths a real kernel takes only rarely. Tests and
// benchmarks alone include this.
#pragma once

class ZK_ClassId;

// While one exists, ZK_CreateUuid fails.
class ZK_TestFailCreateUuid {
 public:
  ZK_TestFailCreateUuid();
  ~ZK_TestFailCreateUuid();
  ZK_TestFailCreateUuid(const ZK_TestFailCreateUuid&) = delete;
  ZK_TestFailCreateUuid& operator=(const ZK_TestFailCreateUuid&) = delete;

 private:
  bool m_previous;
};

// While one exists, the base ZK_UserData::Transform fails and changes nothing.
class ZK_TestFailUserDataTransform {
 public:
  ZK_TestFailUserDataTransform();
  ~ZK_TestFailUserDataTransform();
  ZK_TestFailUserDataTransform(const ZK_TestFailUserDataTransform&) = delete;
  ZK_TestFailUserDataTransform& operator=(const ZK_TestFailUserDataTransform&) = delete;

 private:
  bool m_previous;
};

// While one exists, the registration it was made for is withdrawn: the class is unknown by name
// and by uuid, as in a program that never registered it (benchmarks read files so, to measure
// the host alone on the same bytes). The registration comes back, last, when it goes.
class ZK_TestHideClass {
 public:
  explicit ZK_TestHideClass(const ZK_ClassId& class_id);
  ~ZK_TestHideClass();
  ZK_TestHideClass(const ZK_TestHideClass&) = delete;
  ZK_TestHideClass& operator=(const ZK_TestHideClass&) = delete;

 private:
  const ZK_ClassId& m_class_id;
  bool m_hidden;
};
