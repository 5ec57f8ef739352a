// Test seams of the kernel stand-in: scope guards that make kernel calls fail on demand, so that
// tests can reach the failure paths a real kernel takes only rarely. Tests alone include this.
#pragma once

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
