// LifePage: the page of frm_MC on which the life of a sample is chosen: the model and its
// parameters, how many points are drawn of it and how, and the seeds.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QWidget>
#include <array>
#include <vector>

#include "actions/sample_form.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class LifePage : public QWidget {
  Q_OBJECT

 public:
  LifePage(Session& session, UserCommands& commands);

  void read_into(SampleForm& form) const;
  void show_seeds(const std::array<std::string, WichmannHill::streams>& seeds);

 private:
  QWidget* make_models();
  QWidget* make_parameters();
  QWidget* make_drawing();
  QWidget* make_seeds();
  void choose(const SampledModel& model);
  const SampledModel& chosen() const;
  void check_seed(std::size_t i);
  void draw_seeds();

  Session& session_;
  UserCommands& commands_;
  std::vector<QRadioButton*> Opt_Dist_;
  std::array<QLabel*, 13> lblPar_{};
  std::array<QLineEdit*, 13> txt_par_{};
  QComboBox* cbo_SampSize_ = nullptr;
  std::array<QRadioButton*, 2> Opt_Rand_{};  ///< by chance, precise
  std::array<QLineEdit*, WichmannHill::streams> txt_Seed_{};
};

}  // namespace tavlo
