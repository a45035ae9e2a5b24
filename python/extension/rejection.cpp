#include "python/extension/rejection.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <regex>

namespace vistrel::python {
namespace {

struct WrongType {
  Error error;
};

vistrel_error errorOf(int32_t status, const std::string& argument, const std::string& value,
                      const std::string& reason) {
  vistrel_error error{};
  error.status = status;
  std::snprintf(error.argument, sizeof error.argument, "%s", argument.c_str());
  std::snprintf(error.value, sizeof error.value, "%s", value.c_str());
  const std::string subject = value.empty() ? argument : argument + " " + error.value;
  const std::string text = subject.empty() ? reason : subject + ": " + reason;
  std::snprintf(error.reason, sizeof error.reason, "%s", reason.c_str());
  std::snprintf(error.text, sizeof error.text, "%s", text.c_str());
  return error;
}

// The last character may be cut.
py::object strOf(const char* text) {
  return py::reinterpret_steal<py::object>(
      PyUnicode_DecodeUTF8(text, static_cast<py::ssize_t>(std::strlen(text)), "ignore"));
}

// The package has the classes; `kind` chooses one.
void raise(const Error& error, const char* kind) {
  const py::object make = py::module_::import("vistrel._errors").attr("error_of");
  const py::object raised = make(kind, strOf(error.what()), error.status(), strOf(error.argument()),
                                 strOf(error.value()), strOf(error.reason()));
  PyErr_SetObject(py::type::handle_of(raised).ptr(), raised.ptr());
}

void raiseProgramError(const app::ProgramError& error) {
  const std::string text = withArguments(error.what());
  if (error.status() == app::kInputOutput)
    PyErr_SetString(PyExc_OSError, text.c_str());
  else
    raise(Error(errorOf(VISTREL_BAD_FORMAT, "", "", text)), "value");
}

const char* kindOf(const Error& error) {
  switch (error.status()) {
    case VISTREL_NO_MEMORY: return "memory";
    case VISTREL_INTERNAL:
    case VISTREL_BAD_STREAM:
    case VISTREL_BUSY_STREAM:
    case VISTREL_NO_STREAM:
    case VISTREL_BAD_TEAM:
    case VISTREL_NO_THREAD:
    case VISTREL_RUN_FAILED: return "runtime";
    default: return "value";
  }
}

}  // namespace

void reject(int32_t status, const std::string& argument, const std::string& value,
            const std::string& reason) {
  throw Error(errorOf(status, argument, value, reason));
}

void rejectType(int32_t status, const std::string& argument, const std::string& type,
                const std::string& reason) {
  throw WrongType{Error(errorOf(status, argument, type, reason))};
}

void rejectParsed(const Parameter& parameter, const std::string& text) {
  const size_t subject = text.find_first_of(" :"), reason = text.rfind(": ");
  const std::string value =
      subject < reason ? text.substr(subject + 1, reason - subject - 1) : std::string();
  reject(parameter.status, parameter.name, value, withArguments(text.substr(reason + 2)));
}

void check(int32_t status, const vistrel_error& error) {
  if (status != VISTREL_OK) throw Error(error);
}

std::string withArguments(const std::string& text) {
  static const std::regex option("--([a-z]+)(?:-([a-z]+))?");
  std::string result;
  size_t end = 0;
  for (std::sregex_iterator m(text.begin(), text.end(), option), none; m != none; ++m) {
    result += m->prefix().str() + m->str(1) + (m->length(2) ? "_" : "") + m->str(2);
    end = static_cast<size_t>(m->position() + m->length());
  }
  return result + text.substr(end);
}

void bindRejection() {
  py::register_local_exception_translator([](std::exception_ptr exception) {
    try {
      std::rethrow_exception(exception);
    } catch (const WrongType& wrong) {
      raise(wrong.error, "type");
    } catch (const Error& error) {
      raise(error, kindOf(error));
    } catch (const app::ProgramError& error) {
      raiseProgramError(error);
    } catch (const py::builtin_exception& error) {
      error.set_error();
    } catch (const std::bad_alloc&) {
      raise(Error(errorOf(VISTREL_NO_MEMORY, "", "", "out of memory")), "memory");
    } catch (const std::exception& error) {
      raise(Error(errorOf(VISTREL_INTERNAL, "", "", error.what())), "runtime");
    }
  });
}

}  // namespace vistrel::python
